// The printer of item_sale: prints its port and accepts every sale on so many connections until the first one
// is closed. A process of its own, also beside a till that runs under Wine.
//
//     sale_printer CONNECTIONS
#include "bench/loopback_printer.h"
#include "bench/sale_exchange.h"

#include <cstdio>
#include <cstdlib>

int main(int count, char** arguments)
{
    if (count != 2) {
        std::fputs("sale_printer: usage: sale_printer CONNECTIONS\n", stderr);
        return EXIT_FAILURE;
    }
    bench::LoopbackPrinter printer;
    std::printf("%d\n", printer.port());
    std::fflush(stdout);
    printer.serve(static_cast<std::size_t>(std::atoi(arguments[1])), bench::saleRequest().size() + 1);
    return EXIT_SUCCESS;
}
