// What a device does with its link when it opens and closes it beside raw access.
#include "device/device.h"

#include <gtest/gtest.h>

namespace telvofm::test {
namespace {

// Notes whether the transport is somebody's alone while it is opened and closed. Raw access that is blocked
// in it lets go of it at the second cut, as one does that came just before a send.
class WatchedLink final : public LinkDriver
{
public:
    WatchedLink() : LinkDriver("watched") {}
    void open() override { isOpenedAlone = isHeld(); }
    void close() override { isClosedAlone = isHeld(); }
    void cut() override
    {
        ++cuts;
        if (cuts == 2) {
            transportLock.unlock_shared();
        }
    }
    Byte sendCommand(std::string_view /*request*/) override { return 0; }
    void sendBlocks(std::string_view /*data*/, bool /*lastPart*/) override {}
    std::string query(std::string_view /*request*/) override { return {}; }
    std::string queryStrict(std::string_view /*request*/) override { return {}; }
    std::size_t writeRaw(std::string_view /*bytes*/) override { return 0; }
    Byte readByte(bool /*passThrough*/, std::int64_t /*waitMs*/) override { return 0; }

    bool isHeld()
    {
        const bool isFree = transportLock.try_lock();
        if (isFree) {
            transportLock.unlock();
        }
        return !isFree;
    }

    bool isOpenedAlone = false;
    bool isClosedAlone = false;
    int cuts = 0;
};

class DeviceLink : public ::testing::Test
{
protected:
    std::shared_ptr<WatchedLink> link = std::make_shared<WatchedLink>();
    Device device{link};
};

TEST_F(DeviceLink, IsOpenedAloneAndThenFree)
{
    device.open(false);
    EXPECT_TRUE(link->isOpenedAlone);
    EXPECT_FALSE(link->isHeld());
}

TEST_F(DeviceLink, IsClosedAloneAndThenFree)
{
    device.close();
    EXPECT_TRUE(link->isClosedAlone);
    EXPECT_FALSE(link->isHeld());
    EXPECT_EQ(link->cuts, 0) << "nobody was there";
}

TEST_F(DeviceLink, IsCutUntilRawAccessHasLeftIt)
{
    link->transportLock.lock_shared();
    device.close();
    EXPECT_EQ(link->cuts, 2);
    EXPECT_TRUE(link->isClosedAlone);
    EXPECT_FALSE(link->isHeld());
}

} // namespace
} // namespace telvofm::test
