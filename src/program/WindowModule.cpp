#include "program/WindowModule.h"

#include <cstdio>
#include <string>

#include <dlfcn.h>
#include <limits.h>
#include <unistd.h>

int runWindowModule(int* argc, char** argv)
{
    char self[PATH_MAX];
    const ssize_t length = readlink("/proc/self/exe", self, sizeof self);
    if (length <= 0) {
        std::fprintf(stderr, "zusettings: cannot find the program's own path\n");
        return 1;
    }
    const std::string program(self, static_cast<std::size_t>(length));
    const std::string path = program.substr(0, program.rfind('/') + 1) + ZUSETTINGS_WINDOW_MODULE;
    // Kept loaded until the process ends: Qt's objects outlive the call.
    void* module = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!module) {
        std::fprintf(stderr, "zusettings: cannot load the window library: %s\n", dlerror());
        return 1;
    }
    using Entry = int (*)(int*, char**);
    const auto entry = reinterpret_cast<Entry>(dlsym(module, "zusettings_window_main"));
    if (!entry) {
        std::fprintf(stderr, "zusettings: %s has no window entry\n", path.c_str());
        return 1;
    }
    return entry(argc, argv);
}
