// Takes one step of a till's day in a printer's memory for each byte on standard input, and says each that is
// committed with a byte on standard output. It is there to be killed.
//
//     memory_writer FILE
#include "tests/unit/printer/scripted_sale.h"

#include <unistd.h>

#include <cstdio>
#include <exception>

int main(int count, char** arguments)
try {
    using namespace virtual_printer;
    if (count != 2) {
        return 2;
    }
    Memory memory(arguments[1]);
    State state = memory.load().value_or(test::stateWhenNew());
    char byte = 'r'; // it is ready
    while (::write(STDOUT_FILENO, &byte, 1) == 1 && ::read(STDIN_FILENO, &byte, 1) == 1) {
        const Draft draft = test::nextStep(state);
        memory.commit(state, draft);
        state = draft.next;
    }
    return 0;
} catch (const std::exception& error) {
    std::fputs(error.what(), stderr);
    return 1;
}
