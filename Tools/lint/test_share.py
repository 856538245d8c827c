#!/usr/bin/env python3
"""Reports the share of tests in all lines of code, and the sizes of files. Fails where the tests fall far behind."""

import common

LOWEST_SHARE = 0.15


def percentile(sizes, share):
    return sorted(sizes)[min(len(sizes) - 1, int(len(sizes) * share))] if sizes else 0


def main():
    tests, product, headers, sources = 0, 0, [], []
    for name in common.code_files():
        lines = (common.text_of(name) or "").count("\n")
        if name.startswith(("Tests/", "Fuzz/")):
            tests += lines
        elif not name.startswith(("Benchmarks/", "Tools/")):
            product += lines
            (headers if name.endswith(".h") else sources).append(lines)
    share = tests / (tests + product) if tests + product else 0.0
    print(f"tests {tests} lines, product {product} lines, share of tests {share:.1%}")
    for kind, sizes in (("headers", headers), ("sources", sources)):
        print(f"{kind}: {len(sizes)}, median {percentile(sizes, 0.5)}, 90th percentile {percentile(sizes, 0.9)}, "
              f"longest {max(sizes, default=0)}")
    common.finish([f"the share of tests is below {LOWEST_SHARE:.0%}, far from the quarter that it should be"] if share < LOWEST_SHARE else [])


if __name__ == "__main__":
    main()
