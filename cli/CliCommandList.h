#pragma once

#include "CliCommand.h"

#include <memory>
#include <vector>

// Every command of kx410ctl, in the order of the help overview.
std::vector<std::unique_ptr<CliCommand>> CliCommandList();
