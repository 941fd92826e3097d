// Where this program has the library's functions from. Tests are linked with it (linked_library.cpp); the
// command-line tool loads it when it runs (loaded_library.cpp), so that it can say what is wrong with one
// that is missing.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

namespace telvofm::tools {

using ExportedFunction = void (*)();

class MissingFunction : public std::runtime_error
{
public:
    explicit MissingFunction(std::string_view name)
        : std::runtime_error("the library has no function " + std::string(name) +
                             "; install the library that came with this program")
    {
    }
};

// Null when the library has no function of this name.
ExportedFunction exportedFunction(std::string_view name);

// The same with its type, as `exported<decltype(openFM)>("openFM")`; throws when there is none.
template <typename Function>
Function* exported(std::string_view name)
{
    const auto found = reinterpret_cast<Function*>(exportedFunction(name));
    if (found == nullptr) {
        throw MissingFunction(name);
    }
    return found;
}

} // namespace telvofm::tools
