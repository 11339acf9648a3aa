#pragma once

#include <QString>

namespace demo {

/// The main function of a program that draws pictures of Sorrel at work into the folder which is its one
/// argument. The exit status is 0 if `draw` comes to its end, 1 if it throws, which is told, and 64 if the
/// arguments are others.
int runDrawingProgram(int argc, char** argv, void (*draw)(const QString& folder));

}  // namespace demo
