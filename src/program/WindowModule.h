// Loading the window library, which holds everything of the interactive mode,
// from the folder of the running program.
#ifndef WINDOWMODULE_H
#define WINDOWMODULE_H

// Loads the window library next to the running program and runs its entry.
// When it cannot be loaded, says so on stderr and returns 1.
int runWindowModule(int* argc, char** argv);

#endif // WINDOWMODULE_H
