#include "api/call_log.h"

#include "api/telvofm.h"
#include "device/text.h"

#include <cstdio>

namespace telvofm {

void CallLog::switchOn(std::string_view newPath)
{
    const std::scoped_lock lock(settings);
    path = newPath;
    enabled = true;
}

void CallLog::switchOff()
{
    enabled = false;
}

void CallLog::append(std::string_view line)
{
    const std::scoped_lock lock(settings);
    std::FILE* file = std::fopen(path.c_str(), "a");
    if (file == nullptr) {
        return;
    }
    static_cast<void>(std::setvbuf(file, nullptr, _IONBF, 0)); // the line goes out in one write
    static_cast<void>(std::fwrite(line.data(), 1, line.size(), file));
    static_cast<void>(std::fclose(file));
}

CallLog& callLog()
{
    static CallLog& log = *new CallLog;
    return log;
}

} // namespace telvofm

using namespace telvofm;

void setLogginOn(const char* path)
{
    callLog().switchOn(Text(path));
}

void setLogginOff(void)
{
    callLog().switchOff();
}
