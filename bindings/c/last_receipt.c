/*
 * Prints the printer's last receipt, whatever its length, in Windows-1250 as the library hands it over.
 *
 *     last_receipt ADDRESS
 *
 * It ends with 0, or with 1 when the printer cannot be asked.
 */
#include "telvofm.h"

#include <stdio.h>

enum
{
    device = 1
};

static int printLastReceipt(void)
{
    ResultObject* receipt = createResultObject();
    if (receipt == NULL) {
        return -1;
    }
    const int code = getLastParagonResultObject(device, receipt);
    if (code == 0) { /* after a failure the object has what it had before */
        fwrite(getResultObjectString(receipt), 1, (size_t)getResultObjectLength(receipt), stdout);
    }
    destroyResultObject(receipt);
    return code;
}

int main(int count, char** arguments)
{
    if (count != 2) {
        fputs("usage: last_receipt ADDRESS\n", stderr);
        return 1;
    }
    int code = openFM(arguments[1]);
    if (code == 0) {
        code = printLastReceipt();
    }
    closeFM(); /* also after an open that has failed */
    if (code != 0) {
        fprintf(stderr, "the printer cannot be asked: code %d\n", code);
    }
    return code != 0;
}
