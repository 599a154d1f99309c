#include "DisplayCookie.h"

#include "Cookie.h"
#include "ScopedEnvironment.h"
#include "TemporaryFolder.h"

#include <array>
#include <ostream>

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <unistd.h>

namespace {

constexpr int DISPLAY_NUMBER = 7;

std::string thisMachine()
{
    std::array<char, 256> name{};
    gethostname(name.data(), name.size() - 1);
    return name.data();
}

std::string bytes(int family, const char* address)
{
    std::array<char, sizeof(in6_addr)> binary{};
    inet_pton(family, address, binary.data());
    return {binary.data(), family == AF_INET ? sizeof(in_addr) : sizeof(in6_addr)};
}

/// An IPv4 or IPv6 address, or that of a local socket for an empty text.
sockaddr_storage server(const std::string& address)
{
    sockaddr_storage result{};
    result.ss_family = AF_UNIX;
    if (inet_pton(AF_INET, address.c_str(), &reinterpret_cast<sockaddr_in&>(result).sin_addr) == 1)
        result.ss_family = AF_INET;
    else if (
        inet_pton(AF_INET6, address.c_str(), &reinterpret_cast<sockaddr_in6&>(result).sin6_addr) ==
        1)
        result.ss_family = AF_INET6;
    return result;
}

const Cookie EVERYWHERE;
const Cookie HERE{.family = Cookie::LOCAL, .address = thisMachine(), .displayNumber = "7"};
const Cookie V4{
    .family = Cookie::INTERNET, .address = bytes(AF_INET, "192.0.2.1"), .displayNumber = "7"};
const Cookie LOOPBACK{
    .family = Cookie::INTERNET, .address = bytes(AF_INET, "127.0.0.1"), .displayNumber = "7"};
const Cookie V6{
    .family = Cookie::INTERNET_6, .address = bytes(AF_INET6, "2001:db8::1"), .displayNumber = "7"};

struct Case {
    const char* server;
    Cookie cookie;
    bool isFor;

    friend void PrintTo(const Case& row, std::ostream* out) { *out << row.server; }
};

} // namespace

class DisplayCookieTest : public testing::TestWithParam<Case> {};

TEST_P(DisplayCookieTest, IsForTheServersThatClientsTakeItFor)
{
    const auto& [address, cookie, isFor] = GetParam();
    const TemporaryFolder folder;
    const ScopedEnvironment file("XAUTHORITY", folder.write("cookies", cookieFile(cookie)));

    EXPECT_EQ(DisplayCookie::isThereFor(server(address), DISPLAY_NUMBER), isFor);
}

INSTANTIATE_TEST_SUITE_P(
    LocalSocket, DisplayCookieTest,
    testing::Values(
        Case{"", EVERYWHERE, true}, Case{"", Cookie{.displayNumber = "7"}, true},
        Case{"", Cookie{.displayNumber = "17"}, false}, Case{"", HERE, true},
        Case{"", Cookie{.family = Cookie::LOCAL, .address = thisMachine()}, true},
        Case{
            "", Cookie{.family = Cookie::LOCAL, .address = thisMachine(), .displayNumber = "8"},
            false},
        Case{
            "", Cookie{.family = Cookie::LOCAL, .address = "another", .displayNumber = "7"}, false},
        Case{"", LOOPBACK, false}, Case{"", V6, false},
        Case{"", Cookie{.protocol = "XDM-AUTHORIZATION-1"}, true},
        Case{"", Cookie{.protocol = "ANOTHER-COOKIE-1"}, false}));

INSTANTIATE_TEST_SUITE_P(
    Network, DisplayCookieTest,
    testing::Values(
        Case{"192.0.2.1", V4, true}, Case{"192.0.2.2", V4, false}, Case{"192.0.2.1", HERE, false},
        Case{"192.0.2.1", EVERYWHERE, true}, Case{"2001:db8::1", V6, true},
        Case{"2001:db8::2", V6, false}, Case{"::ffff:192.0.2.1", V4, true}));

INSTANTIATE_TEST_SUITE_P(
    ThisMachineByNetwork, DisplayCookieTest,
    testing::Values(
        Case{"127.0.0.1", HERE, true}, Case{"127.0.0.1", LOOPBACK, false}, Case{"::1", HERE, true},
        Case{"::ffff:127.0.0.1", HERE, true}));

TEST(DisplayCookie, IsSoughtInTheHomeFolderWithoutAnotherFile)
{
    const TemporaryFolder folder;
    const ScopedEnvironment home("HOME", folder.path());
    const ScopedEnvironment file("XAUTHORITY", std::nullopt);

    EXPECT_FALSE(DisplayCookie::isThereFor(server(""), DISPLAY_NUMBER));
    folder.write(".Xauthority", cookieFile(EVERYWHERE));
    EXPECT_TRUE(DisplayCookie::isThereFor(server(""), DISPLAY_NUMBER));
}

TEST(DisplayCookie, IsNotThereInWhatIsNoCookieFile)
{
    const TemporaryFolder folder;
    const ScopedEnvironment file("XAUTHORITY", folder.write("cookies", "\xFF\xFF\xFF"));

    EXPECT_FALSE(DisplayCookie::isThereFor(server(""), DISPLAY_NUMBER));
}
