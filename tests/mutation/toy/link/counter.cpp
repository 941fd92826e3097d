// A counter for several threads, for the tool's own test: that its lock is left out shows to the thread
// sanitizer only.
#include <mutex>

static std::mutex state;
static int count = 0;

int next()
{
    const std::scoped_lock lock(state);
    ++count;
    return count;
}
