// What the doctor has found out about one thing.
#pragma once

#include <string>
#include <vector>

namespace telvofm::tools {

enum class Health
{
    good,
    bad,
    unknown // this system does not tell
};

struct Finding
{
    std::string about; // a word for programs: "library", "port", ...
    Health health;
    std::string sentence;
    std::string advice; // what to do; empty where nothing has to be done
};

using Findings = std::vector<Finding>;

inline bool isHealthy(const Findings& findings)
{
    for (const Finding& finding : findings) {
        if (finding.health == Health::bad) {
            return false;
        }
    }
    return true;
}

} // namespace telvofm::tools
