// The component object itself: creation, its slots and its private helper.
#include <gtest/gtest.h>

#include "frame/cl_kiv.hpp"
#include "frame/errors.hpp"

namespace kiv {

struct ClKivPrivate {
    static String StripNuls(Cl_KIV& k, const Variant& text) { return k.StripNuls(text); }
};

namespace {

TEST(Component, FreshObjectHasEmptySlots) {
    Cl_KIV k;
    EXPECT_EQ(k.DlK_DatMask, nullptr);
    EXPECT_EQ(k.DlK_TimMask, nullptr);
    EXPECT_EQ(k.typeName(), "Cl_KIV");
}

TEST(Component, NibbleTableIsFilledAtCreation) {
    Cl_KIV k;
    EXPECT_EQ(k.Nibble(0), u"0000");
    EXPECT_EQ(k.Nibble(1), u"0000");
    EXPECT_EQ(k.Nibble(2), u"0001");
    EXPECT_EQ(k.Nibble(11), u"1010");
    EXPECT_EQ(k.Nibble(16), u"1111");
    EXPECT_THROW(k.Nibble(17), RuntimeError);
    EXPECT_THROW(k.Nibble(-1), RuntimeError);
}

TEST(Component, StripNulsDropsTheCharacterAfterEachNul) {
    Cl_KIV k;
    const String withNul = String(u"AB") + u'\0' + u"CD";
    EXPECT_EQ(ClKivPrivate::StripNuls(k, Variant(withNul)), u"ABD");
    EXPECT_EQ(ClKivPrivate::StripNuls(k, Variant(String(u"AB") + u'\0')), u"AB");
    EXPECT_EQ(ClKivPrivate::StripNuls(k, Variant(String(u"\0\0X", 3))), u"X");
    EXPECT_EQ(ClKivPrivate::StripNuls(k, Variant(u"")), u"");
}

}  // namespace
}  // namespace kiv
