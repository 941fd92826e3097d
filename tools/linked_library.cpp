// The functions of the library that the program is linked with.
#include "api/telvofm.h"
#include "tools/exported_function.h"

#include <map>

namespace telvofm::tools {

ExportedFunction exportedFunction(std::string_view name)
{
#define TELVOFM_ENTRY(name, parameters) {#name, reinterpret_cast<ExportedFunction>(&(name))},
    static const std::map<std::string_view, ExportedFunction> functions = {
#include "tools/export_table_entries.inc"
    };
#undef TELVOFM_ENTRY
    const auto found = functions.find(name);
    return found == functions.end() ? nullptr : found->second;
}

} // namespace telvofm::tools
