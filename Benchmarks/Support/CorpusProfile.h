#pragma once

#include <QtGlobal>

namespace quib::benchmarks {

/// Fills the profile in force with the first notes of the corpus. Leaves no store open and no shared service behind.
void fillProfileWithCorpus(qsizetype count);

} // namespace quib::benchmarks
