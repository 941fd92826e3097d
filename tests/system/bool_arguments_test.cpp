// Callers in other languages pass other numbers than 1 for true: some the byte 255, some a whole -1.
#include "telvofm.h"
#include "tests/system/recording_printer.h"
#include "tests/unit/bytes.h"
#include "tests/unit/own_folder.h"

#include <gtest/gtest.h>

namespace telvofm::test {
namespace {

// As a caller sees an export whose `bool` it takes for a `Truth`.
template <typename Seen, typename Export>
Seen* seenAs(Export* function)
{
    return reinterpret_cast<Seen*>(reinterpret_cast<void (*)()>(function));
}

template <typename Truth>
class BoolArguments : public ::testing::Test
{
protected:
    void SetUp() override
    {
        setLogginOn(log.c_str());
        ASSERT_EQ(openFM(printer.address().c_str()), 0);
        std::filesystem::remove(log);
    }
    void TearDown() override
    {
        closeFM();
        setLogginOff();
    }

    // The request and the line of one call, and no more.
    void expectCall(const std::string& request, const std::string& line)
    {
        EXPECT_EQ(printer.takeReceived(), std::vector{request});
        std::ifstream lines(log);
        EXPECT_EQ(std::string(std::istreambuf_iterator<char>(lines), {}), line + "\n");
        lines.close();
        std::filesystem::remove(log);
    }

    OwnFolder folder;
    const std::string log = folder.file("calls.log");
    RecordingPrinter printer;
};

using Truths = ::testing::Types<unsigned char, int>;
TYPED_TEST_SUITE(BoolArguments, Truths);

constexpr int truths[] = {0, 1, 2, 255, -1};

// Allowed is the digit 0 on the wire.
TYPED_TEST(BoolArguments, AnyByteButZeroAllowsOverPayment)
{
    auto* const set = seenAs<int(int, int, double, TypeParam)>(&setPaymentType);
    for (const int truth : truths) {
        SCOPED_TRACE(truth);
        EXPECT_EQ(set(1, 2, 0.5, static_cast<TypeParam>(truth)), 0);
        const std::string digit = truth == 0 ? "1" : "0";
        this->expectCall(
            bytes({0x1C, 0x01, 0xBB, '2', 0, '0', '.', '5', '0', 0}) + digit + bytes({0, 0x04}),
            std::string("setPaymentTypeDevice 1, paymentTypeNumber 2, minCurrency 0.5, overPay ") +
                (truth == 0 ? "0" : "1"));
    }
}

TYPED_TEST(BoolArguments, AnyByteButZeroAllowsOverPaymentOfANamedType)
{
    auto* const set = seenAs<int(int, const char*, int, double, TypeParam)>(&setPaymentType2);
    for (const int truth : truths) {
        SCOPED_TRACE(truth);
        EXPECT_EQ(set(1, "K", 2, 0.5, static_cast<TypeParam>(truth)), 0);
        const std::string digit = truth == 0 ? "1" : "0";
        this->expectCall(
            bytes({0x1C, 0x01, 0xB8, 'K', 0, '2', 0, '0', '.', '5', '0', 0}) + digit + bytes({0, 0x04}),
            std::string("setPaymentType2Device 1, paymentTypeName K, paymentTypeNumber 2, minCurrency 0.5, "
                        "overPay ") +
                (truth == 0 ? "0" : "1"));
    }
}

TYPED_TEST(BoolArguments, AnyByteButZeroPrintsTheFreeIdentifier)
{
    auto* const set = seenAs<int(int, TypeParam, const char*)>(&freeID);
    for (const int truth : truths) {
        SCOPED_TRACE(truth);
        EXPECT_EQ(set(1, static_cast<TypeParam>(truth), "X"), 0);
        const std::string digit = truth == 0 ? "0" : "1";
        this->expectCall(bytes({0x1C, 0x01, 0x38}) + digit + bytes({0, 'X', 0, 0x04}),
                         "freeIDdevice 1print " + digit + "freeID X");
    }
}

TYPED_TEST(BoolArguments, AnyByteButZeroSwitchesTheTwoLineItemsOn)
{
    auto* const set = seenAs<void(TypeParam)>(&setAutoTwoLineItem);
    for (const int truth : truths) {
        set(static_cast<TypeParam>(truth));
        EXPECT_EQ(isAutoTwoLineItem(), truth != 0) << truth;
    }
}

} // namespace
} // namespace telvofm::test
