#pragma once

#include "platform/DiskFile.h"

struct stat;

DiskFacts FactsFrom(const struct stat &facts);
