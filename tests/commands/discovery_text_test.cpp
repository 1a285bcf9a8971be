// Address and MAC text as the network commands read it.
#include <gtest/gtest.h>

#include "commands/discovery.h"

namespace zel {
namespace {

TEST(DiscoveryText, AddressAndMacTextBecomeBytes) {
    using A4 = std::array<uint8_t, 4>;
    EXPECT_EQ(address_text_bytes("192.168.1.1"), (A4{0xC0, 0xA8, 0x01, 0x01}));
    EXPECT_EQ(address_text_bytes("10.0.0.300"), (A4{10, 0, 0, 0x2C})); // low byte of 300
    EXPECT_EQ(address_text_bytes("12345.6.7.8"), (A4{0xD2, 5, 6, 7})); // 4 characters: 1234
    EXPECT_EQ(address_text_bytes("1.2"), (A4{1, 2, 0, 0}));
    EXPECT_EQ(address_text_bytes(nullptr), (A4{0, 0, 0, 0}));

    using A6 = std::array<uint8_t, 6>;
    EXPECT_EQ(mac_text_bytes("1-2-3-4-5-6"), (A6{1, 2, 3, 4, 5, 6}));
    // Decimal by design: hexadecimal letters read as 0; 5 characters at most per part.
    EXPECT_EQ(mac_text_bytes("AB-CD-1F-255-256-999999"), (A6{0, 0, 1, 0xFF, 0x00, 0x9F}));
}

} // namespace
} // namespace zel
