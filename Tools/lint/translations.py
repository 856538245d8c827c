#!/usr/bin/env python3
"""Every text of the interface is translated, into every language, and each translation can stand for its text.

Held against the sources by lupdate: a text that the files lack, and one that the sources no longer have, is an error, as
is a message without a translation, with a number of plural forms that is not the language's, with other places (%1, %n,
%L1) than its text, with an access key where the text has none or none where it has one, with other blanks at its ends, or
with another number of lines. Usage: translations.py [--update] [--lupdate PROGRAM]
"""

import argparse
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ElementTree

FOLDER = pathlib.Path("Resources/Translations")
SOURCES = ["App", "Core"]
# Plural forms as Qt knows them. English has its plurals only: the rest is as it was written.
FORMS = {"en": 2, "it": 2, "de": 2, "es": 2, "fr": 2, "ja": 1, "ar": 6}
PLACE = re.compile(r"%L?\d{1,2}|%L?n")
ACCESS_KEY = re.compile(r"&(?=\w)")
SKIPPED = 77


def messages_of(text):
    """(context, source, comment) -> message, of the text of a file."""
    found = {}
    for context in ElementTree.fromstring(text).iter("context"):
        for message in context.iter("message"):
            comment = message.findtext("comment") or ""
            found[(context.findtext("name"), message.findtext("source") or "", comment)] = message
    return found


def forms_of(message):
    translation = message.find("translation")
    if translation is None:
        return []
    if message.get("numerus") == "yes":
        return [form.text or "" for form in translation.iter("numerusform")]
    return [translation.text or ""]


def ends_of(text):
    text = text.replace("\u00a0", " ")  # which keeps a number with its unit
    return text[: len(text) - len(text.lstrip())], text[len(text.rstrip()):]


def findings_in_form(source, form, is_plural):
    expected, found = sorted(PLACE.findall(source)), sorted(PLACE.findall(form))
    # One, or two, may be said in words.
    if found != expected and not (is_plural and found == [place for place in expected if not place.endswith("n")]):
        yield f"places {found} for {expected}"
    if bool(ACCESS_KEY.search(form)) != bool(ACCESS_KEY.search(source)):
        yield "an access key in one of text and translation"
    if len(ACCESS_KEY.findall(form)) > 1:
        yield "two access keys"
    if ends_of(form) != ends_of(source):
        yield "other blanks at the ends"
    if form.count("\n") != source.count("\n"):
        yield "another number of lines"


def findings_in(language, text):
    """What is wrong with a file, whatever the sources hold."""
    for (context, source, _), message in messages_of(text).items():
        where = f"{language}: {context}: \"{source}\""
        translation = message.find("translation")
        is_plural = message.get("numerus") == "yes"
        forms = forms_of(message)
        if translation is None or translation.get("type") or not all(forms) or not forms:
            yield f"{where}: not translated"
            continue
        if is_plural and len(forms) != FORMS[language]:
            yield f"{where}: {len(forms)} plural forms, the language has {FORMS[language]}"
        for form in forms:
            for finding in findings_in_form(source, form, is_plural):
                yield f"{where}: \"{form}\": {finding}"


def findings_in_menus(language, text):
    """Access keys that tell the texts of a context apart in English must do so in the language."""
    keys = {}
    for (context, source, _), message in messages_of(text).items():
        if ACCESS_KEY.search(source):
            for form in forms_of(message):
                found = ACCESS_KEY.search(form)
                if found:
                    keys.setdefault((context, form[found.end()].lower()), {})[source] = source[ACCESS_KEY.search(source).end()]
    for (context, key), sources in keys.items():
        if len(set(sources.values())) > 1:
            yield f"{language}: {context}: {', '.join(sorted(sources))}: one access key, {key}, for all"


def update(lupdate, language, file):
    only = ["-pluralonly"] if language == "en" else []
    subprocess.run([lupdate, "-silent", "-locations", "none", "-no-obsolete", "-source-language", "en",
                    "-target-language", language, *only, *SOURCES, "-ts", str(file)], check=True)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--update", action="store_true", help="takes new texts over, and forgets those that are gone")
    parser.add_argument("--lupdate", default="/usr/lib/qt6/bin/lupdate")
    arguments = parser.parse_args()
    lupdate = arguments.lupdate if shutil.which(arguments.lupdate) else None
    if lupdate is None and arguments.update:
        sys.exit("there is no lupdate")
    findings = []
    for language in FORMS:
        file = FOLDER / f"quib_{language}.ts"
        if arguments.update:
            update(lupdate, language, file)
        text = file.read_text()
        findings.extend(findings_in(language, text))
        findings.extend(findings_in_menus(language, text))
        if lupdate is not None and not arguments.update:
            with tempfile.TemporaryDirectory() as folder:
                fresh = pathlib.Path(folder) / file.name
                fresh.write_text(text)
                update(lupdate, language, fresh)
                old, new = messages_of(text), messages_of(fresh.read_text())
            findings.extend(f"{language}: {key[0]}: \"{key[1]}\": the file lacks this text" for key in new if key not in old)
            findings.extend(f"{language}: {key[0]}: \"{key[1]}\": no source has this text" for key in old if key not in new)
    for finding in findings:
        print(finding)
    if findings:
        sys.exit(1)
    if lupdate is None:
        sys.exit(SKIPPED)


if __name__ == "__main__":
    main()
