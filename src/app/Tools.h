#pragma once

#include "session/Tool.h"

#include <span>

/// The tools of the program, each with the command that opens it.
std::span<const Tool> Tools();
