// Calls the shared library at random and writes a line of JSON about each call to standard output, for
// judge.py.
//
//     random_calls SEED CALLS FOLDER PICTURE...      the pictures lie in the folder, in which logs and
//     replies are written
#include "tests/second_opinion/random_caller.h"

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <span>
#include <unistd.h>

int main(int count, char** words)
{
    const std::span arguments(words, static_cast<std::size_t>(count));
    if (arguments.size() < 5) {
        std::fputs("random_calls SEED CALLS FOLDER PICTURE...\n", stderr);
        return 2;
    }
    try {
        std::filesystem::current_path(arguments[3]);
        // The library prints too, and that is looked at.
        std::FILE* records = ::fdopen(::dup(STDOUT_FILENO), "w");
        telvofm::test::RandomCaller caller(std::strtoull(arguments[1], nullptr, 10),
                                           {arguments.begin() + 4, arguments.end()});
        for (auto left = std::strtoull(arguments[2], nullptr, 10); left != 0; --left) {
            const std::string record = caller.call();
            std::fwrite(record.data(), 1, record.size(), records);
        }
        std::fclose(records);
        closeFM();
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "random_calls: %s\n", failure.what());
        return 1;
    }
    return 0;
}
