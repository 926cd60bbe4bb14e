#pragma once

#include <QIcon>
#include <QLatin1StringView>

/// An icon of the program's family by its name, in all the sizes it was rendered in.
QIcon Icon(QLatin1StringView name);
