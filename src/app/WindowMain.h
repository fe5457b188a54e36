// The entry of the window library, which the program loads at run time only
// when it opens the window: the windowless modes never load Qt's GUI libraries.
#ifndef WINDOWMAIN_H
#define WINDOWMAIN_H

// Runs the interactive mode: the main window until it closes. `argc` must
// outlive the call, as QApplication keeps a reference to it.
extern "C" __attribute__((visibility("default"))) int zusettings_window_main(int* argc, char** argv);

#endif // WINDOWMAIN_H
