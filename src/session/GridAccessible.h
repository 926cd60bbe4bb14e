#pragma once

class GridView;

/// Lets screen readers see a GridView as a table with its header, its cells and what is selected. Once for the process;
/// more calls do nothing.
void InstallGridAccessibility();
