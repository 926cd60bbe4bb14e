#pragma once

#include "platform/DiskFile.h"

struct stat;

DiskFacts FactsFrom(const struct stat &facts);
/// A descriptor of a regular file, and its facts; -1 for anything else, which is not waited for.
int OpenRegular(const char *path, int flags, struct stat &facts);
