#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>

#include "frame/convert.hpp"
#include "test_support.hpp"

namespace kiv {
namespace {

using kiv::testing::ErrorOf;

TEST(ConvertText, EveryKindOfValue) {
    EXPECT_EQ(ToText(Variant()), u"");
    EXPECT_EQ(ToText(Variant(u"ab")), u"ab");
    EXPECT_EQ(ToText(Variant(Integer{-32768})), u"-32768");
    EXPECT_EQ(ToText(Variant(Long{20061225})), u"20061225");
    EXPECT_EQ(ToText(Variant(Byte{200})), u"200");
    EXPECT_EQ(ToText(Variant(12.5)), u"12,5");
    EXPECT_EQ(ToText(Variant(1.1f)), u"1,1");
    EXPECT_EQ(ToText(Variant(Currency{-12345})), u"-1,2345");
    EXPECT_EQ(ToText(Variant(Currency{70000})), u"7");
    EXPECT_EQ(ToText(Variant(true)), u"True");
    EXPECT_EQ(ToText(Variant(false)), u"False");
    EXPECT_EQ(ToText(Variant(Date{39076.25})), u"25/12/2006 6.00.00");
    EXPECT_EQ(ErrorOf([] { ToText(Variant::null()); }), kInvalidUseOfNull);
    EXPECT_EQ(ErrorOf([] { ToText(Variant::missing()); }), kTypeMismatch);
    EXPECT_EQ(ErrorOf([] { ToText(Variant(Object())); }), kTypeMismatch);
    EXPECT_EQ(JoinText(Variant::null()), u"");
    EXPECT_EQ(JoinText(Variant(0.5)), u"0,5");
}

TEST(ConvertNumbers, RoundHalfEvenWithOverflow) {
    EXPECT_EQ(ToInteger(Variant(2.5)), 2);
    EXPECT_EQ(ToInteger(Variant(3.5)), 4);
    EXPECT_EQ(ToInteger(Variant(u"1.234,5")), 1234);
    EXPECT_EQ(ToInteger(Variant(true)), -1);
    EXPECT_EQ(ToInteger(Variant()), 0);
    EXPECT_EQ(ErrorOf([] { ToInteger(Variant(Long{32768})); }), kOverflow);
    EXPECT_EQ(ErrorOf([] { ToInteger(Variant::null()); }), kInvalidUseOfNull);
    EXPECT_EQ(ErrorOf([] { ToInteger(Variant(u"x")); }), kTypeMismatch);
    EXPECT_EQ(ToLong(Variant(-2.5)), -2);
    EXPECT_EQ(ToLong(Variant(Date{39076.75})), 39077);
    EXPECT_EQ(ErrorOf([] { ToLong(Variant(3e9)); }), kOverflow);
    EXPECT_EQ(ToByte(Variant(255.4)), 255);
    EXPECT_EQ(ErrorOf([] { ToByte(Variant(Integer{-1})); }), kOverflow);
    EXPECT_EQ(ErrorOf([] { ToSingle(Variant(1e300)); }), kOverflow);
    EXPECT_EQ(ToSingle(Variant(u"1,5")), 1.5f);
    EXPECT_EQ(ToCurrency(Variant(1.23456)), Currency{12346});
    // -2^63 units is the least Currency; 2^63 is one past the greatest.
    EXPECT_EQ(ToCurrency(Variant(-922337203685477.5808)), Currency{INT64_MIN});
    EXPECT_EQ(ErrorOf([] { ToCurrency(Variant(922337203685477.5808)); }), kOverflow);
    EXPECT_EQ(ToDoubleLocale(Variant(u"(2,5)")), -2.5);
    EXPECT_EQ(RoundToInteger(-32768.5), -32768);
    EXPECT_EQ(ErrorOf([] { RoundToInteger(32767.5); }), kOverflow);
    EXPECT_EQ(RoundToLong(2147483647.0), 2147483647);
    EXPECT_EQ(ErrorOf([] { RoundToLong(2147483647.5); }), kOverflow);
    EXPECT_EQ(ErrorOf([] { RoundToLong(std::nan("")); }), kOverflow);
}

TEST(ConvertBoolean, WordsNumbersAndFailures) {
    EXPECT_TRUE(ToBooleanLocale(Variant(u"true")));
    EXPECT_TRUE(ToBooleanLocale(Variant(u"VERO")));
    EXPECT_FALSE(ToBooleanLocale(Variant(u"Falso")));
    EXPECT_FALSE(ToBooleanLocale(Variant(u"FALSE")));
    EXPECT_TRUE(ToBooleanLocale(Variant(u"0,5")));
    EXPECT_FALSE(ToBooleanLocale(Variant(u"0")));
    EXPECT_TRUE(ToBooleanLocale(Variant(Integer{-3})));
    EXPECT_FALSE(ToBooleanLocale(Variant()));
    EXPECT_EQ(ErrorOf([] { ToBooleanLocale(Variant(u"si")); }), kTypeMismatch);
    EXPECT_EQ(ErrorOf([] { ToBooleanLocale(Variant::null()); }), kInvalidUseOfNull);
}

// The minus keeps the type but for Empty, Byte and Boolean (Integer) and
// text (Double); the least value of each whole type has no negation.
TEST(ConvertNegate, TypesAndTheLeastValues) {
    const auto negated = [](const Variant& v) { return Negate(v); };
    EXPECT_EQ(*negated(Variant()).as<Integer>(), 0);
    EXPECT_TRUE(negated(Variant::null()).isNull());
    EXPECT_EQ(*negated(Variant(Byte{200})).as<Integer>(), -200);
    EXPECT_EQ(*negated(Variant(true)).as<Integer>(), 1);
    EXPECT_EQ(*negated(Variant(u"2,5")).as<Double>(), -2.5);
    EXPECT_EQ(negated(Variant(Date{-1.5})).as<Date>()->serial, 1.5);
    EXPECT_EQ(*negated(Variant(Integer{-32767})).as<Integer>(), 32767);
    EXPECT_EQ(ErrorOf([] { Negate(Variant(Integer{-32768})); }), kOverflow);
    EXPECT_EQ(*negated(Variant(Long{-2147483647})).as<Long>(), 2147483647);
    EXPECT_EQ(ErrorOf([] { Negate(Variant(Long{-2147483647 - 1})); }), kOverflow);
    EXPECT_EQ(negated(Variant(Currency{INT64_MIN + 1})).as<Currency>()->scaled, INT64_MAX);
    EXPECT_EQ(ErrorOf([] { Negate(Variant(Currency{INT64_MIN})); }), kOverflow);
    EXPECT_EQ(ErrorOf([] { Negate(Variant(u"abc")); }), kTypeMismatch);
}

TEST(ConvertObject, OnlyObjects) {
    EXPECT_EQ(ToObject(Variant(Object())), nullptr);
    EXPECT_EQ(ErrorOf([] { ToObject(Variant(Integer{1})); }), kTypeMismatch);
    EXPECT_EQ(ErrorOf([] { ToObject(Variant()); }), kTypeMismatch);
}

TEST(ConvertCompare, NumbersTextsAndMixtures) {
    EXPECT_EQ(CompareValues(Variant(Integer{2}), Variant(10.0)), Order::Less);
    EXPECT_EQ(CompareValues(Variant(true), Variant(Integer{-1})), Order::Equal);
    EXPECT_EQ(CompareValues(Variant(u"2"), Variant(u"10")), Order::Greater);  // as texts
    EXPECT_EQ(CompareValues(Variant(u"a"), Variant(u"B")), Order::Greater);   // code units
    EXPECT_EQ(CompareValues(Variant(Integer{2}), Variant(u"10")), Order::Less);
    EXPECT_EQ(CompareValues(Variant(u"1,5"), Variant(1.5)), Order::Equal);
    EXPECT_EQ(CompareValues(Variant(Integer{99}), Variant(u"abc")), Order::Less);
    EXPECT_EQ(CompareValues(Variant(u"abc"), Variant(Integer{99})), Order::Greater);
    EXPECT_EQ(CompareValues(Variant(), Variant(Integer{0})), Order::Equal);
    EXPECT_EQ(CompareValues(Variant(), Variant(u"")), Order::Equal);
    EXPECT_EQ(CompareValues(Variant(u"a"), Variant()), Order::Greater);
    EXPECT_EQ(CompareValues(Variant(), Variant(Integer{-1})), Order::Greater);
    EXPECT_EQ(CompareValues(Variant(Date{39076}), Variant(u"25/12/2006")), Order::Equal);
    EXPECT_EQ(CompareValues(Variant(Date{39076}), Variant(u"26/12/2006")), Order::Less);
    EXPECT_EQ(CompareValues(Variant::null(), Variant(Integer{1})), Order::Null);
    EXPECT_EQ(CompareValues(Variant(u"x"), Variant::null()), Order::Null);
    EXPECT_EQ(ErrorOf([] { CompareValues(Variant(Object()), Variant(Integer{1})); }), kTypeMismatch);
}

}  // namespace
}  // namespace kiv
