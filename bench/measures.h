// The measures. Each prints its lines; see report.h.
#pragma once

#include "desk.h"

namespace quillmate::bench {

/// Tables against a bare loop and against a late-bound script.
void MeasureTables(Desk& desk);
/// Paths with an id, found and absent, on pages of 100 to 10,000 elements.
void MeasureIdPaths(Desk& desk);
/// A path that has to walk, against a bare loop.
void MeasureWalk(Desk& desk);
/// Locators by id, class and name against one call of their kind.
void MeasureDirectLocators(Desk& desk);
/// A text in a frame three documents deep, against the same by hand.
void MeasureFrames(Desk& desk);
/// Commands whose first check fails: the frame around a command alone.
void MeasureChecks();
/// The search for a window among foreign ones.
void MeasureDiscovery();
/// The library's size and the time to load it.
void MeasureLibrary();

/// Makes windows until the process is ended: the foreign ones of MeasureDiscovery.
void ShowForeignWindows(int count);
/// Loads and frees the library once, and exits with the time in microseconds.
int TimeLoading();

}  // namespace quillmate::bench
