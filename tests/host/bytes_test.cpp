// Fields of stored values: any width, any alignment, both orders, against literal bytes.
#include "host/bytes.h"

#include "support/harness.h"

namespace bgp::test {
namespace {

TEST(Fields, AreLoadedAndStoredWithoutAlignment)
{
    for (uint32_t at = 0; at < 8; ++at) {
        uint8_t bytes[16];
        std::memset(bytes, 0xEE, sizeof bytes);
        Store(bytes + at, uint32_t{0x04030201});
        EXPECT_EQ(Hex(bytes, sizeof bytes),
                  std::string(2 * at, 'e') + "01020304" + std::string(2 * (sizeof bytes - 4 - at), 'e'));
        EXPECT_EQ(Load<uint32_t>(bytes + at), 0x04030201u);
        EXPECT_EQ(Load<uint16_t>(bytes + at + 1), 0x0302u);
        EXPECT_EQ(Load<uint8_t>(bytes + at + 3), 0x04u);
    }
}

struct Ordered {
    uint32_t width;
    uint64_t number; // what is kept of 0x1122334455667788
    const char *low;
    const char *big;
};

constexpr Ordered kOrdered[] = {
    {1, 0x88, "88eeeeeeeeeeeeee", "88eeeeeeeeeeeeee"},
    {2, 0x7788, "8877eeeeeeeeeeee", "7788eeeeeeeeeeee"},
    {3, 0x667788, "887766eeeeeeeeee", "667788eeeeeeeeee"},
    {4, 0x55667788, "88776655eeeeeeee", "55667788eeeeeeee"},
    {5, 0x4455667788, "8877665544eeeeee", "4455667788eeeeee"},
    {6, 0x334455667788, "887766554433eeee", "334455667788eeee"},
    {7, 0x22334455667788, "88776655443322ee", "22334455667788ee"},
    {8, 0x1122334455667788, "8877665544332211", "1122334455667788"},
};

TEST(Fields, OfEveryWidthInBothOrders)
{
    for (const Ordered &row : kOrdered) {
        SCOPED_TRACE(row.width);
        uint8_t low[8];
        uint8_t big[8];
        std::memset(low, 0xEE, sizeof low);
        std::memset(big, 0xEE, sizeof big);
        StoreLow(low, 0x1122334455667788, row.width);
        StoreBig(big, 0x1122334455667788, row.width);
        EXPECT_EQ(Hex(low, sizeof low), row.low);
        EXPECT_EQ(Hex(big, sizeof big), row.big);
        EXPECT_EQ(LoadLow(low, row.width), row.number);
        if (row.width <= 4) {
            EXPECT_EQ(LoadBig(big, row.width), row.number);
        }
    }
    EXPECT_EQ(LoadLow(nullptr, 0), 0u);
    EXPECT_EQ(LoadBig(nullptr, 0), 0u);
}

TEST(Fields, AreReversedInPlace)
{
    constexpr const char *kReversed[] = {
        "0102030405060708", "0102030405060708", "0201030405060708", "0302010405060708", "0403020105060708",
        "0504030201060708", "0605040302010708", "0706050403020108", "0807060504030201",
    };
    for (uint32_t width = 0; width <= 8; ++width) {
        uint8_t bytes[] = {1, 2, 3, 4, 5, 6, 7, 8};
        Reverse(bytes, width);
        EXPECT_EQ(Hex(bytes, sizeof bytes), kReversed[width]) << width;
        Reverse(bytes, width);
        EXPECT_EQ(Hex(bytes, sizeof bytes), kReversed[0]) << width;
    }
}

} // namespace
} // namespace bgp::test
