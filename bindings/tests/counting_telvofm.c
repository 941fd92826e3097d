/* The library with a count of its result objects: it stands in front of the real one, passes all on, and
 * keeps the file that TELVOFM_RESULT_OBJECTS names at
 *
 *     created 7 released 7 wrong 0
 *
 * Wrong is what must not happen to a result object: released twice, or asked after it was released. */
#define _GNU_SOURCE /* RTLD_DEFAULT and the like */
#include "telvofm.h"

#include <dlfcn.h>
#include <pthread.h>
#include <stdio.h>
#include <stdlib.h>

enum
{
    most = 1024 /* that live at a time */
};

static pthread_mutex_t lock = PTHREAD_MUTEX_INITIALIZER;
static const ResultObject* living[most];
static int created, released, wrong;

/* A function of the real library, which is loaded with this one. */
static void (*real(const char* name))(void)
{
    void* const library = dlopen("libtelvofm.so.1", RTLD_LAZY | RTLD_NOLOAD);
    void (*function)(void) = NULL;
    if (library != NULL) {
        *(void**)&function = dlsym(library, name); /* as POSIX has it */
    }
    if (function == NULL) {
        abort();
    }
    return function;
}

static void keep(void)
{
    const char* const path = getenv("TELVOFM_RESULT_OBJECTS");
    FILE* const file = path != NULL ? fopen(path, "w") : NULL;
    if (file != NULL) {
        fprintf(file, "created %d released %d wrong %d\n", created, released, wrong);
        fclose(file);
    }
}

/* Where an object stands, or where there is room for null; `most` when it is nowhere. */
static int place(const ResultObject* object)
{
    int found = 0;
    while (found < most && living[found] != object) {
        ++found;
    }
    return found;
}

/* Whether it may be used; counts it if not. */
static int isLiving(const ResultObject* object)
{
    pthread_mutex_lock(&lock);
    const int is = object != NULL && place(object) < most;
    if (!is) {
        ++wrong;
        keep();
    }
    pthread_mutex_unlock(&lock);
    return is;
}

ResultObject* createResultObject(void)
{
    ResultObject* const object = ((ResultObject * (*)(void)) real("createResultObject"))();
    pthread_mutex_lock(&lock);
    const int room = place(NULL);
    if (room == most) {
        abort();
    }
    living[room] = object;
    ++created;
    keep();
    pthread_mutex_unlock(&lock);
    return object;
}

void destroyResultObject(ResultObject* object)
{
    if (!isLiving(object)) {
        return;
    }
    pthread_mutex_lock(&lock);
    living[place(object)] = NULL;
    ++released;
    keep();
    pthread_mutex_unlock(&lock);
    ((void (*)(ResultObject*))real("destroyResultObject"))(object);
}

int getResultObjectLength(const ResultObject* object)
{
    return isLiving(object) ? ((int (*)(const ResultObject*))real("getResultObjectLength"))(object) : 0;
}

const char* getResultObjectString(const ResultObject* object)
{
    return isLiving(object) ? ((const char* (*)(const ResultObject*))real("getResultObjectString"))(object)
                            : "";
}
