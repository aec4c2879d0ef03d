#include "app/knock.h"

#include <gtest/gtest.h>

#include <cstring>
#include <poll.h>
#include <string>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <thread>
#include <unistd.h>
#include <utility>

#include "support/temporary_home.h"

namespace varnhold::testing {
namespace {

class KnockTest : public ::testing::Test {
protected:
    KnockTest() { ::chmod(home.path().c_str(), 0700); }
    ~KnockTest() override { close(); }
    KnockTest(const KnockTest&) = delete;
    KnockTest& operator=(const KnockTest&) = delete;

    void listen() {
        server = ::socket(AF_UNIX, SOCK_STREAM, 0);
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        std::strcpy(address.sun_path, knockingPath(home.path()).c_str());
        ASSERT_EQ(::bind(server, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
        ASSERT_EQ(::listen(server, 5), 0);
    }
    void close() {
        if (server >= 0) {
            ::close(std::exchange(server, -1));
        }
    }
    // Returns when somebody is at the door.
    void await() const {
        pollfd door{.fd = server, .events = POLLIN, .revents = 0};
        ASSERT_EQ(::poll(&door, 1, -1), 1);
    }
    // What the next guest says, up to its end.
    [[nodiscard]] std::string hear() const {
        const int guest = ::accept(server, nullptr, nullptr);
        std::string said;
        char buffer[64];
        for (ssize_t got = 0; (got = ::read(guest, buffer, sizeof buffer)) > 0;) {
            said.append(buffer, static_cast<std::size_t>(got));
        }
        ::close(guest);
        return said;
    }

    TemporaryHome home;
    int server = -1;
};

TEST_F(KnockTest, HandsOverTheRightToComeToTheFront) {
    listen();
    std::string said;
    std::thread first([&] { said = hear(); });
    EXPECT_TRUE(knock(home.path(), "a token"));
    first.join();
    EXPECT_EQ(said, "a token");
}

TEST_F(KnockTest, IsHeardWithoutAnythingToHandOver) {
    listen();
    std::string said = "nothing yet";
    std::thread first([&] { said = hear(); });
    EXPECT_TRUE(knock(home.path(), ""));
    first.join();
    EXPECT_EQ(said, "");
}

TEST_F(KnockTest, IsNotHeardWhereNobodyIs) {
    EXPECT_FALSE(knock(home.path(), ""));
    EXPECT_FALSE(knock(home.at("missing"), ""));
}

TEST_F(KnockTest, IsNotHeardBySocketsThatAreLeftOver) {
    listen();
    close();
    EXPECT_FALSE(knock(home.path(), "a token"));
}

TEST_F(KnockTest, IsNotHeardByOneThatGoesWithoutALook) {
    listen();
    std::thread first([this] {
        await();
        close();
    });
    EXPECT_FALSE(knock(home.path(), "a token"));
    first.join();
}

TEST_F(KnockTest, SaysNothingInAFolderThatOthersCanWriteTo) {
    listen();
    ::chmod(home.path().c_str(), 0777);
    EXPECT_FALSE(knock(home.path(), "a token"));
}

} // namespace
} // namespace varnhold::testing
