#include "api/result_objects.h"

#include "api/telvofm.h"

#include <new>

ResultObject* createResultObject(void)
{
    return new (std::nothrow) ResultObject;
}

void destroyResultObject(ResultObject* object)
{
    delete object;
}

int getResultObjectLength(const ResultObject* object)
{
    return static_cast<int>(object->contents.size());
}

const char* getResultObjectString(const ResultObject* object)
{
    return object->contents.c_str();
}
