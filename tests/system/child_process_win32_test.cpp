// A host that starts other programs, and lets them inherit its handles as many do, while a printer is
// connected.
#include "telvofm.h"
#include "tests/wire/loopback.h"

#include <gtest/gtest.h>

#include <array>
#include <windows.h>

namespace telvofm::test {
namespace {

using namespace std::chrono_literals;

// A program that inherits every handle that can be inherited, and waits until this object's end.
class Child
{
public:
    Child()
    {
        SECURITY_ATTRIBUTES inheritable{sizeof inheritable, nullptr, TRUE};
        HANDLE input = nullptr;
        EXPECT_TRUE(::CreatePipe(&input, &toChild, &inheritable, 0));
        EXPECT_TRUE(::SetHandleInformation(toChild, HANDLE_FLAG_INHERIT, 0));
        STARTUPINFOA start{};
        start.cb = sizeof start;
        start.dwFlags = STARTF_USESTDHANDLES;
        start.hStdInput = input;
        start.hStdOutput = ::GetStdHandle(STD_OUTPUT_HANDLE);
        start.hStdError = ::GetStdHandle(STD_ERROR_HANDLE);
        std::array<char, 32> command{"cmd /c set /p line="}; // reads a line
        PROCESS_INFORMATION started{};
        EXPECT_TRUE(::CreateProcessA(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                                     &start, &started));
        ::CloseHandle(input);
        ::CloseHandle(started.hThread);
        process = started.hProcess;
    }
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;
    ~Child()
    {
        ::CloseHandle(toChild);
        EXPECT_EQ(::WaitForSingleObject(process, 60000), WAIT_OBJECT_0);
        ::CloseHandle(process);
    }

    [[nodiscard]] bool isRunning() const { return ::WaitForSingleObject(process, 0) == WAIT_TIMEOUT; }

private:
    HANDLE toChild = nullptr;
    HANDLE process = nullptr;
};

TEST(ChildProcess, DoesNotKeepTheConnectionOpenThatTheHostHasClosed)
{
    const wire::Listener listener;
    ASSERT_EQ(openFM(("127.0.0.1:" + std::to_string(listener.port())).c_str()), 0);
    const wire::Connection connection = listener.accept(10s);
    ASSERT_TRUE(connection.isOpen());
    const Child child;
    closeFM();
    EXPECT_EQ(connection.receive(1, 10s), std::nullopt) << "the printer does not see the end";
    EXPECT_TRUE(child.isRunning());
}

} // namespace
} // namespace telvofm::test
