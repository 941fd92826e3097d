#include "tools/port_rights_posix.h"

#include <algorithm>
#include <array>
#include <grp.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

namespace telvofm::tools {
namespace {

std::string nameOfGroup(gid_t group)
{
    const ::group* const entry = ::getgrgid(group);
    return entry == nullptr ? std::to_string(group) : entry->gr_name;
}

std::string nameOfUser()
{
    const ::passwd* const entry = ::getpwuid(::getuid());
    return entry == nullptr ? std::to_string(::getuid()) : entry->pw_name;
}

// Entered in the list of groups, which counts from the next login on.
bool isEntered(gid_t group, const std::string& user)
{
    const ::group* const entry = ::getgrgid(group);
    if (entry == nullptr) {
        return false;
    }
    for (char** member = entry->gr_mem; *member != nullptr; ++member) {
        if (user == *member) {
            return true;
        }
    }
    return false;
}

} // namespace

Finding examineRights(const std::string& path)
{
    struct stat status
    {
    };
    ::stat(path.c_str(), &status);
    const std::string group = nameOfGroup(status.st_gid);
    if (::access(path.c_str(), R_OK | W_OK) == 0) {
        return {"rights", Health::good, "You may open it; its group is " + group + ".", {}};
    }
    const std::string user = nameOfUser();
    constexpr unsigned groupMayUseIt = S_IRGRP | S_IWGRP;
    if ((status.st_mode & groupMayUseIt) != groupMayUseIt) {
        return {"rights", Health::bad, "You may not open it, and neither may its group " + group + ".",
                "Give the group the right to it: sudo chmod g+rw " + path + "."};
    }
    if (isEntered(status.st_gid, user)) {
        return {"rights", Health::bad,
                "You may not open it, although " + user + " is in its group " + group + ".",
                "Log out and in again: a new group counts from the next login on."};
    }
    return {"rights", Health::bad, "You may not open it: " + user + " is not in its group " + group + ".",
            "Run 'sudo usermod -aG " + group + " " + user + "' and log in again."};
}

} // namespace telvofm::tools
