/*
 * Says how many microseconds the loading of a library takes, how many that of another one, and how many more
 * the first takes: the median of each. Both are loaded in turn, many times, and unloaded again: whatever else
 * the machine does meets both.
 *
 *     loading_time LIBRARY OTHER_LIBRARY
 */
#include <stdio.h>
#include <stdlib.h>

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

static void* loaded(const char* library)
{
    return LoadLibraryA(library);
}

static int isUnloaded(const char* library, void* handle)
{
    return FreeLibrary(handle) && GetModuleHandleA(library) == NULL;
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

static void* loaded(const char* library)
{
    return dlopen(library, RTLD_NOW);
}

static int isUnloaded(const char* library, void* handle)
{
    return dlclose(handle) == 0 && dlopen(library, RTLD_NOW | RTLD_NOLOAD) == NULL;
}
#endif

enum
{
    times = 300
};

static double loadingTime(const char* library)
{
    const double before = now();
    void* const handle = loaded(library);
    const double time = now() - before;
    if (handle == NULL) {
        fprintf(stderr, "loading_time: %s cannot be loaded\n", library);
        exit(1);
    }
    if (!isUnloaded(library, handle)) {
        fprintf(stderr, "loading_time: %s stays loaded, so that it cannot be loaded again\n", library);
        exit(1);
    }
    return time;
}

static int ascending(const void* left, const void* right)
{
    const double difference = *(const double*)left - *(const double*)right;
    return (difference > 0) - (difference < 0);
}

static double median(double* values)
{
    qsort(values, times, sizeof *values, ascending);
    return values[times / 2];
}

int main(int count, char** arguments)
{
    static double first[times];
    static double second[times];
    static double difference[times];
    if (count != 3) {
        return 2;
    }
    for (int time = 0; time < times; ++time) {
        first[time] = loadingTime(arguments[1]);
        second[time] = loadingTime(arguments[2]);
        difference[time] = first[time] - second[time];
    }
    printf("%.0f %.0f %.0f\n", median(first), median(second), median(difference));
    return 0;
}
