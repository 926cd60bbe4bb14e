#pragma once

/// Copies the user's extended attributes of a file, which must all arrive, to an open one, and the access list, where
/// the host lets it.
bool CopyExtendedAttributes(const char *from, int to);
