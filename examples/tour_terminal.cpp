// How wide the terminal is, as the environment or the system says.

#include "tour.h"

#include <algorithm>
#include <cstdlib>

#if defined(__unix__) || defined(__APPLE__)
#include <sys/ioctl.h>
#include <unistd.h>
#endif

namespace {

int window_width() {
#if defined(TIOCGWINSZ)
    if (winsize window{}; ioctl(STDOUT_FILENO, TIOCGWINSZ, &window) == 0) return window.ws_col;
#endif
    return 0;
}

} // namespace

int terminal_width() {
    int width = aliteral(std::getenv("COLUMNS")).as_int(); // 0 if it is not set
    if (width == 0) width = window_width();
    return width == 0 ? 80 : std::clamp(width, 40, 400);
}
