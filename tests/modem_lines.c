/*
 * Gives pseudo-terminals modem lines, for tests: linked or preloaded, it answers the modem-line calls that
 * the kernel refuses for them. The state lies in the file that MODEM_LINES names. Its first byte is what the
 * printer drives, 1 for CTS and 2 for DSR (3: both), so that a test can move the lines while a call runs;
 * without the file both are on. Its second byte is what the program drives, 1 for DTR and 2 for RTS.
 */
#define _GNU_SOURCE
#include <errno.h>
#include <fcntl.h>
#include <stdarg.h>
#include <stdlib.h>
#include <sys/ioctl.h>
#include <sys/syscall.h>
#include <unistd.h>

enum
{
    CTS = 1,
    DSR = 2,
    DTR = 1,
    RTS = 2
};

static int open_state(int flags)
{
    const char* path = getenv("MODEM_LINES");
    return path == NULL ? -1 : open(path, flags | O_CLOEXEC);
}

static int lines_now(void)
{
    unsigned char driven = CTS | DSR;
    int file = open_state(O_RDONLY);
    if (file != -1) {
        if (read(file, &driven, 1) != 1) {
            driven = CTS | DSR;
        }
        close(file);
    }
    return ((driven & CTS) != 0 ? TIOCM_CTS : 0) | ((driven & DSR) != 0 ? TIOCM_DSR : 0) | TIOCM_DTR |
           TIOCM_RTS;
}

static void drive(unsigned long request, int lines)
{
    const int moved = ((lines & TIOCM_DTR) != 0 ? DTR : 0) | ((lines & TIOCM_RTS) != 0 ? RTS : 0);
    unsigned char driven = 0;
    int file = open_state(O_RDWR);
    if (file == -1) {
        return;
    }
    if (request == TIOCMSET || pread(file, &driven, 1, 1) != 1) {
        driven = 0;
    }
    driven = (unsigned char)(request == TIOCMBIC ? driven & ~moved : driven | moved);
    if (pwrite(file, &driven, 1, 1) != 1) {
        errno = EIO;
    }
    close(file);
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
        drive(request, *(int*)argument);
        return 0;
    default:
        errno = ENOTTY;
        return -1;
    }
}
