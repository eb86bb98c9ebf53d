#include "platform/Wire.h"

#include <gmock/gmock.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace vorlane::platform {

// Not anonymous, because `wire` cannot decompose types without linkage.
namespace wiretest {

enum class Fruit { apple, pear, plum };

struct Pair {
    std::string name;
    double weight = 0;

    friend bool operator==(const Pair&, const Pair&) = default;
};

struct Empty {
    friend bool operator==(const Empty&, const Empty&) = default;
};

struct Record {
    std::int64_t number = 0;
    bool flag = false;
    Fruit fruit = Fruit::apple;
    std::string text;
    std::optional<Pair> pair;
    std::vector<Pair> pairs;
    std::variant<Empty, Pair, std::int64_t> choice;

    friend bool operator==(const Record&, const Record&) = default;
};

using Message = std::variant<Empty, Record>;

}  // namespace wiretest

namespace wire {

template <>
inline constexpr wiretest::Fruit last<wiretest::Fruit> = wiretest::Fruit::plum;

}  // namespace wire

namespace {

using namespace wiretest;

Record sample()
{
    return {.number = std::numeric_limits<std::int64_t>::min(),
            .flag = true,
            .fruit = Fruit::plum,
            .text = std::string("a\0b", 3),
            .pair = Pair{.name = "", .weight = -0.0},
            .pairs = {{.name = "one", .weight = 1}, {.name = "two", .weight = 0.1}},
            .choice = Pair{.name = "chosen", .weight = 3}};
}

template <typename T>
std::string bytesOf(T value)
{
    wire::Writer writer;
    wire::Walk walk(writer);
    walk(value);
    return writer.bytes;
}

template <typename T>
void expectUnreadable(const std::string& bytes)
{
    EXPECT_EQ(wire::decode<T>(bytes), std::nullopt) << testing::PrintToString(bytes);
}

TEST(WireTest, ReadsWhatItWrites)
{
    EXPECT_EQ(wire::decode<Record>(bytesOf(sample())), sample());
    EXPECT_EQ(wire::decode<Record>(bytesOf(Record())), Record());
    EXPECT_EQ(wire::decode<Empty>(bytesOf(Empty())), Empty());
}

TEST(WireTest, EncodesAnAlternativeLikeItsVariant)
{
    const auto bytes = wire::encodeAs<Message>(sample());

    EXPECT_EQ(bytes, bytesOf(Message(sample())));
    EXPECT_EQ(wire::decode<Message>(bytes), Message(sample()));
}

TEST(WireTest, KeepsEveryBitOfADouble)
{
    for (const double value : {std::numeric_limits<double>::denorm_min(), -0.0, 1e308}) {
        const auto read = wire::decode<Pair>(bytesOf(Pair{.name = "", .weight = value}));

        ASSERT_TRUE(read);
        EXPECT_EQ(read->weight, value);
        EXPECT_EQ(std::signbit(read->weight), std::signbit(value));
    }
}

TEST(WireTest, RejectsTruncatedInput)
{
    const auto whole = bytesOf(sample());

    for (std::size_t size = 0; size < whole.size(); ++size) {
        expectUnreadable<Record>(whole.substr(0, size));
    }
}

TEST(WireTest, RejectsTrailingBytes)
{
    expectUnreadable<Record>(bytesOf(sample()) + '\0');
}

TEST(WireTest, RejectsOutOfRangeValues)
{
    expectUnreadable<bool>("\x02");
    expectUnreadable<Fruit>("\x03");
    expectUnreadable<std::optional<bool>>("\x02\x01");
    expectUnreadable<Message>("\x02");
}

TEST(WireTest, RejectsACountThatTheBytesCannotHold)
{
    const std::string count("\xff\xff\xff\xff", 4);

    expectUnreadable<std::string>(count);
    expectUnreadable<std::vector<Pair>>(count + std::string(100, '\0'));
}

}  // namespace
}  // namespace vorlane::platform
