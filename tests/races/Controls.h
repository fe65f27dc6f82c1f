#pragma once

#include "Jobs.h"

/// Moves of one file that are written down here, to show that the judges see what is wrong and only
/// that: the careful one is nowhere wrong, the careless one is.
Job CarefulMove();
Job CarelessMove();
