#pragma once
// Joining a folder and a name, and handing a document, an address or a program to the
// desktop to be opened.

#include "foundation/ShellOpenInfo.h"
#include "foundation/stdstr.h"

// `folder` and `name` with a '/' between, unless the folder is empty or already ends in '/'.
stdstr AppendPathComponent(const stdstr& folder, const stdstr& name);

// Opens `file` the way the desktop opens what is double-clicked:
// - an executable program (an ELF binary or a "#!" script with execute permission) is run
//   itself, with `parameters` split on blanks as its arguments;
// - any other file (made absolute) or an address ("https://...", "mailto:...") is handed to
//   the desktop's opener, `xdg-open`, which takes no parameters; `parameters` are then not
//   used. The environment variable QUILLGATE_OPENER, when set, names another program to
//   use as the opener (tests use it to see what would be opened without a desktop).
// A file that does not exist fails at once. No shell is involved at any point.
//
// Without `wait` the result is whether the process could be started; it is reaped in the
// background. With `wait` this blocks until the process ends and stores its exit code in
// `exitCode` (if given); the result is then, for the opener, whether it exited with 0 (it
// answers 1 for a bad command line, 2 for a missing file, 3 for a missing tool, 4 when the
// opening failed), and for a program, true, whatever its code. `info` (if given) receives
// the started process in either case, or an empty info when nothing was started.
bool ShellOpen(const stdstr& file, const stdstr& parameters, bool wait, ShellOpenInfo* info,
               int* exitCode);
