/* The header is self-contained plain C: nothing is included before it. */
#include "telvofm.h"

int main(void)
{
    return getVersion() == 106 ? 0 : 1;
}
