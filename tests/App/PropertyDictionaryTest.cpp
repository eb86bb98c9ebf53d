#include "App/PropertyDictionary.h"

#include <gtest/gtest.h>

#include <limits>

namespace vorlane {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double twoTo63 = 9223372036854775808.0;

// One value of each type, with the type's name as its key.
const PropertyDictionary oneOfEach{{"integer", std::int64_t{7}},
                                   {"real", 2.5},
                                   {"boolean", true},
                                   {"string", std::string("text")},
                                   {"dictionary", PropertyDictionary{{"Watts", std::int64_t{65}}}}};

PropertyDictionary holding(PropertyDictionary::Value value)
{
    return {{"key", std::move(value)}};
}

TEST(PropertyDictionaryTest, ReturnsEachTypeOfValue)
{
    EXPECT_EQ(oneOfEach.integer("integer"), 7);
    EXPECT_EQ(oneOfEach.real("real"), 2.5);
    EXPECT_EQ(oneOfEach.boolean("boolean"), true);
    EXPECT_EQ(oneOfEach.string("string"), "text");
    ASSERT_TRUE(oneOfEach.dictionary("dictionary"));
    EXPECT_EQ(oneOfEach.dictionary("dictionary")->integer("Watts"), 65);
}

TEST(PropertyDictionaryTest, TreatsAValueOfAnotherTypeAsMissing)
{
    for (const auto* const key : {"boolean", "string", "dictionary"}) {
        EXPECT_FALSE(oneOfEach.integer(key)) << key;
        EXPECT_FALSE(oneOfEach.real(key)) << key;
    }
    for (const auto* const key : {"integer", "real", "string", "dictionary"}) {
        EXPECT_FALSE(oneOfEach.boolean(key)) << key;
    }
    for (const auto* const key : {"integer", "real", "boolean", "dictionary"}) {
        EXPECT_FALSE(oneOfEach.string(key)) << key;
    }
    for (const auto* const key : {"integer", "real", "boolean", "string"}) {
        EXPECT_FALSE(oneOfEach.dictionary(key)) << key;
    }
}

TEST(PropertyDictionaryTest, TreatsAMissingKeyAsAbsent)
{
    EXPECT_FALSE(oneOfEach.integer("Integer"));
    EXPECT_FALSE(oneOfEach.real(""));
    EXPECT_FALSE(oneOfEach.boolean("bool"));
    EXPECT_FALSE(oneOfEach.string("strin"));
    EXPECT_FALSE(oneOfEach.dictionary("strings"));
}

TEST(PropertyDictionaryTest, ConvertsBetweenWholeAndRealNumbers)
{
    EXPECT_EQ(oneOfEach.real("integer"), 7.0);
    EXPECT_EQ(oneOfEach.integer("real"), 2);
    EXPECT_EQ(holding(-2.9).integer("key"), -2);
    EXPECT_EQ(holding(0.99).integer("key"), 0);
}

TEST(PropertyDictionaryTest, ReturnsNoIntegerForARealThatDoesNotFit)
{
    EXPECT_EQ(holding(-twoTo63).integer("key"), std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(holding(9223372036854774784.0).integer("key"), 9223372036854774784);
    for (const double number :
         {twoTo63, -twoTo63 * 1.001, 1e300, infinity, -infinity, notANumber}) {
        EXPECT_FALSE(holding(number).integer("key")) << number;
    }
}

TEST(PropertyDictionaryTest, ReturnsNoRealThatIsNotFinite)
{
    for (const double number : {infinity, -infinity, notANumber}) {
        EXPECT_FALSE(holding(number).real("key")) << number;
    }
    EXPECT_EQ(holding(1e308).real("key"), 1e308);
}

TEST(PropertyDictionaryTest, KeepsTheLastValueOfAKey)
{
    PropertyDictionary properties{{"key", std::int64_t{1}}, {"key", std::int64_t{2}}};
    EXPECT_EQ(properties.integer("key"), 2);

    properties.set("key", std::string("three"));

    EXPECT_FALSE(properties.integer("key"));
    EXPECT_EQ(properties.string("key"), "three");
}

TEST(PropertyDictionaryTest, AcceptsAnyTextAsAKey)
{
    const std::string key("a\0b\xff", 4);
    PropertyDictionary properties;

    properties.set(key, std::string(1'000'000, 'x'));

    EXPECT_EQ(properties.string(key)->size(), 1'000'000U);
    EXPECT_FALSE(properties.string("a"));
}

TEST(PropertyDictionaryTest, KeepsCopiesIndependent)
{
    auto copy = oneOfEach;

    copy.set("integer", std::int64_t{8});

    EXPECT_EQ(oneOfEach.integer("integer"), 7);
    EXPECT_EQ(copy.string("string"), "text");
}

}  // namespace
}  // namespace vorlane
