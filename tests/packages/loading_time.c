/*
 * Says how many microseconds the loading of a library takes that nobody has loaded before.
 *
 *     loading_time LIBRARY
 */
#include <stdio.h>

#if defined(_WIN32)
#include <windows.h>

static double now(void)
{
    LARGE_INTEGER count;
    LARGE_INTEGER inASecond;
    QueryPerformanceCounter(&count);
    QueryPerformanceFrequency(&inASecond);
    return (double)count.QuadPart * 1e6 / (double)inASecond.QuadPart;
}

static int isLoaded(const char* library)
{
    return LoadLibraryA(library) != NULL;
}
#else
#include <dlfcn.h>
#include <time.h>

static double now(void)
{
    struct timespec time;
    timespec_get(&time, TIME_UTC);
    return (double)time.tv_sec * 1e6 + (double)time.tv_nsec / 1e3;
}

static int isLoaded(const char* library)
{
    return dlopen(library, RTLD_NOW) != NULL;
}
#endif

int main(int count, char** arguments)
{
    if (count != 2) {
        return 2;
    }
    const double before = now();
    if (!isLoaded(arguments[1])) {
        fprintf(stderr, "loading_time: %s cannot be loaded\n", arguments[1]);
        return 1;
    }
    printf("%.0f\n", now() - before);
    return 0;
}
