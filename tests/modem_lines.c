/*
 * Gives pseudo-terminals modem lines, for tests: preloaded, it answers the modem-line calls that the kernel
 * refuses for them. The state lies in the file that MODEM_LINES names, its first byte being 1 for CTS and 2
 * for DSR (3: both), so that a test can move the lines while a call runs; without the file both are on.
 */
#define _GNU_SOURCE
#include <dlfcn.h>
#include <errno.h>
#include <fcntl.h>
#include <stdarg.h>
#include <stdlib.h>
#include <sys/ioctl.h>
#include <sys/syscall.h>
#include <unistd.h>

static int lines_now(void)
{
    const char* path = getenv("MODEM_LINES");
    unsigned char state = 3;
    int file = path == NULL ? -1 : open(path, O_RDONLY | O_CLOEXEC);
    if (file != -1) {
        if (read(file, &state, 1) != 1) {
            state = 3;
        }
        close(file);
    }
    return ((state & 1) != 0 ? TIOCM_CTS : 0) | ((state & 2) != 0 ? TIOCM_DSR : 0) | TIOCM_DTR | TIOCM_RTS;
}

/* Only what the kernel refuses is answered here, and only for descriptors that are terminals. */
int ioctl(int descriptor, unsigned long request, ...)
{
    va_list arguments;
    va_start(arguments, request);
    void* argument = va_arg(arguments, void*);
    va_end(arguments);

    const long result = syscall(SYS_ioctl, descriptor, request, argument);
    if (result != -1 || (errno != ENOTTY && errno != EINVAL) || !isatty(descriptor)) {
        return (int)result;
    }
    switch (request) {
    case TIOCMGET:
        *(int*)argument = lines_now();
        return 0;
    case TIOCMBIS:
    case TIOCMBIC:
    case TIOCMSET:
        return 0;
    default:
        errno = ENOTTY;
        return -1;
    }
}
