#pragma once

#include "MediaFiles.h"

/// A file of a playlist of so many entries; they lead to 2,500 MPEG files again and again.
QString MediaList(int entries);
