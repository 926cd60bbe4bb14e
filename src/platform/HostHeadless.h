#pragma once

/// What this host needs to draw without a display, besides what all hosts need.
void PrepareHostHeadless();
