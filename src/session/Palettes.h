#pragma once

/// The program's look where no desktop gives one: the same on every host, light or dark.
void UseStyle(bool dark);
