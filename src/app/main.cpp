// The program's entry: everything happens in ProgramEntry, on the application object that
// static initialisation made.

#include "app/Module.h"
#include "app/ProgramEntry.h"

int main(int argc, char** argv) {
    ProgramEntry entry(_Module, argc, argv);
    return entry.Main();
}
