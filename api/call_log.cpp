#include "api/call_log.h"

#include "api/telvofm.h"
#include "device/text.h"
#include "link/appended_file.h"

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
    const AppendedFile file(path);
    if (file.isOpen()) {
        file.append(line);
    }
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
