#pragma once

#include <string>

#include "model/airfoil.h"

namespace tavilo {

// Renders the five graphs of every ticked polar of `airfoil` in the default
// views of the default ranges, the lift-drag title in `language` (1 English,
// 2 German), into one picture: SVG when `path` ends in ".svg" (any case), PNG
// when it ends in ".png". The lift-drag graph fills the left half, the other
// four share the right half, each under a caption. Needs a QGuiApplication;
// when there is no application object at all, an off-screen one is made for
// the rest of the run. False with a message in `error` (when given) for
// another extension or a file that cannot be written.
bool RenderPlotsToFile(const Airfoil& airfoil, const std::string& path, int language,
                       std::string* error);

// Text needs a QGuiApplication; a converter run from a terminal has none,
// so one is made off screen and lives until the process ends. False with a
// message when another kind of application runs.
bool EnsureGuiApplication(std::string* error);

}  // namespace tavilo
