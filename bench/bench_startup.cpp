// Start-up cost of the settings program against a bare Qt window: time from
// process start to the main window's first frame on screen, and peak resident
// memory. Both programs quit at their first frame; they are started in turns
// several times and the median time, the median of the paired ratios and the
// largest peak are reported:
// offscreen, and on an X server (Xvfb) with a window manager when both are
// installed.
#include "benchsupport.h"

#include <csignal>
#include <string>

namespace
{

// An X server of our own with a window manager on it; both end with the
// object.
class XDisplay
{
public:
    XDisplay()
    {
        int ready[2];
        if (pipe(ready) != 0)
            return;
        m_server = spawn({ "Xvfb", "-displayfd", std::to_string(ready[1]), "-screen", "0", "800x480x24",
                             "-nolisten", "tcp", "-noreset" },
            ready[0]);
        close(ready[1]);
        // Xvfb writes its display number and a newline once it accepts
        // clients; it gives up when it cannot write all of it.
        std::string number;
        char c = 0;
        while (m_server > 0 && read(ready[0], &c, 1) == 1 && c != '\n')
            number += c;
        close(ready[0]);
        if (c != '\n' || number.empty())
            return;
        m_name = ":" + number;
        setenv("DISPLAY", m_name.c_str(), 1);
        m_manager = spawn({ "matchbox-window-manager", "-use_titlebar", "no" }, -1);
        // The window manager must own the screen before the first window maps;
        // it has no signal for that, so it gets a moment.
        usleep(300000);
    }
    ~XDisplay()
    {
        for (const pid_t pid : { m_manager, m_server }) {
            if (pid > 0) {
                kill(pid, SIGTERM);
                waitpid(pid, nullptr, 0);
            }
        }
    }
    bool ok() const { return !m_name.empty() && m_manager > 0; }

private:
    static pid_t spawn(const std::vector<std::string>& command, int closeInChild)
    {
        std::vector<char*> argv;
        for (const std::string& argument : command)
            argv.push_back(const_cast<char*>(argument.c_str()));
        argv.push_back(nullptr);
        const pid_t pid = fork();
        if (pid == 0) {
            if (closeInChild >= 0)
                close(closeInChild);
            const int devNull = open("/dev/null", O_WRONLY);
            dup2(devNull, STDOUT_FILENO);
            dup2(devNull, STDERR_FILENO);
            execvp(argv[0], argv.data());
            _exit(127);
        }
        return pid;
    }

    pid_t m_server = -1;
    pid_t m_manager = -1;
    std::string m_name;
};

bool installed(const char* program)
{
    return std::system((std::string("command -v ") + program + " >/dev/null 2>&1").c_str()) == 0;
}

bool compare(const char* platform, int runs, const char* timeTarget, const char* memoryTarget)
{
    const std::string dir = ZUSETTINGS_BINARY_DIR;
    std::vector<bench::Summary> summaries;
    setenv("QT_QPA_PLATFORM", platform, 1);
    if (!bench::measure(
            { { "floor", { dir + "/bench/floor_window" } }, { "zusettings", { dir + "/src/zusettings" } } },
            runs, summaries, "first-frame\n"))
        return false;
    bench::printRatio("first frame", bench::medianRatio(summaries[1], summaries[0]), timeTarget);
    if (memoryTarget)
        bench::printRatio("peak memory",
            static_cast<double>(summaries[1].peakKiB) / static_cast<double>(summaries[0].peakKiB),
            memoryTarget);
    return true;
}

} // namespace

int main()
{
    QTemporaryDir stateDir;
    if (!stateDir.isValid())
        return 1;
    bench::useThrowAwayUnit(stateDir);
    setenv("ZUSETTINGS_QUIT_AFTER_FIRST_FRAME", "1", 1);
    bench::useOwnInputDevice(stateDir);

    constexpr int runs = 15;
    std::printf("offscreen\n");
    if (!compare("offscreen", runs, "<= 2.0", "<= 1.3"))
        return 1;

    if (!installed("Xvfb") || !installed("matchbox-window-manager")) {
        std::printf(
            "X server with a window manager: skipped, Xvfb or matchbox-window-manager is not installed\n");
        return 0;
    }
    const XDisplay display;
    if (!display.ok()) {
        std::printf("X server with a window manager: skipped, Xvfb did not start\n");
        return 0;
    }
    std::printf("Xvfb with matchbox-window-manager\n");
    return compare("xcb", runs, "<= 1.5", nullptr) ? 0 : 1;
}
