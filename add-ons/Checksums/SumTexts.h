#pragma once

#include "Checksums/SumJob.h"

#include <string>

namespace checksums {

/// What is known of a row: its sum, or how the comparison ended, or why there is none.
std::string TextOf(const SumRow& row);

/// Whether that is something a person must look at.
bool IsTrouble(SumState state);

/// How far the job is, in one line; once it has ended, what it came to.
std::string SummaryOf(const SumJob& job);

/// All lines, as sha256sum writes them, of the rows whose sums are known.
std::string LinesOf(const std::vector<SumRow>& rows);

} // namespace checksums
