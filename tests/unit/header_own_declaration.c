/* A program that loads the library at run time declares no functions: it makes types of them. */
#define TELVOFM_API typedef
#include "telvofm.h"

#include <stddef.h>

int main(void)
{
    getVersion* const version = NULL;
    return version == NULL ? 0 : 1;
}
