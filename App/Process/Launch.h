#pragma once

#include "FrontEnd.h"

namespace quib {

/// The whole of a program's main function: reads the command line, hands over to the instance of the profile that runs,
/// or becomes it, serves until it is asked to end, and ends in order.
/// Shape:   gives the exit status: 0 done, 1 failed, 2 wrong usage.
[[nodiscard]] int runQuib(int &argc, char **argv, FrontEnd &frontEnd);

} // namespace quib
