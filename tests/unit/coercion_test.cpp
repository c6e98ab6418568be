// Every kind of argument against every parameter type of the interface, as a
// table: what a typed parameter receives, or the error the binding raises.
// Numbers round halves to even and overflow past the type's range; text is
// read under the locale; Null and error values are refused by every typed
// parameter; a missing argument is refused where the parameter is required.
#include <gtest/gtest.h>

#include <array>
#include <cfloat>
#include <cstdint>
#include <memory>

#include "canonical.hpp"
#include "frame/dispatch.hpp"
#include "test_support.hpp"

namespace kiv {
namespace {

// One member per parameter type, each handing back what it received.
class Probe : public Dispatchable {
public:
    const ClassInfo* description() const override;
    Variant TakeString(const String& v) { return Variant(v); }
    Variant TakeInteger(Integer v) { return Variant(v); }
    Variant TakeLong(Long v) { return Variant(v); }
    Variant TakeSingle(Single v) { return Variant(v); }
    Variant TakeDouble(Double v) { return Variant(v); }
    Variant TakeCurrency(Currency v) { return Variant(v); }
    Variant TakeDate(Date v) { return Variant(v); }
    Variant TakeBoolean(Boolean v) { return Variant(v); }
    Variant TakeByte(Byte v) { return Variant(v); }
    Variant TakeObject(Object v) { return Variant(v); }
    Variant TakeVariant(const Variant& v) { return v; }
    Variant TakeEnum(EnCF_Result v) { return Variant(static_cast<Long>(v)); }
    Variant TakeVariantArray(const VariantArray& v) { return Variant(static_cast<Array>(v)); }
    Variant TakeStringArray(const StringArray& v) { return Variant(static_cast<Array>(v)); }
};

constexpr const char* kColumns[] = {"String", "Integer", "Long",    "Single",  "Double",       "Currency",    "Date",
                                    "Boolean", "Byte",   "Object", "Variant", "Enum", "VariantArray", "StringArray"};
constexpr std::size_t kTypes = std::size(kColumns);

const ClassInfo* Probe::description() const {
    using P = Probe;
    static const ClassInfo info("Probe", "", nullptr,
                                {
                                    Method<&P::TakeString>("String", "", ByVal("v")),
                                    Method<&P::TakeInteger>("Integer", "", ByVal("v")),
                                    Method<&P::TakeLong>("Long", "", ByVal("v")),
                                    Method<&P::TakeSingle>("Single", "", ByVal("v")),
                                    Method<&P::TakeDouble>("Double", "", ByVal("v")),
                                    Method<&P::TakeCurrency>("Currency", "", ByVal("v")),
                                    Method<&P::TakeDate>("Date", "", ByVal("v")),
                                    Method<&P::TakeBoolean>("Boolean", "", ByVal("v")),
                                    Method<&P::TakeByte>("Byte", "", ByVal("v")),
                                    Method<&P::TakeObject>("Object", "", ByVal("v")),
                                    Method<&P::TakeVariant>("Variant", "", ByVal("v")),
                                    Method<&P::TakeEnum>("Enum", "", ByVal("v")),
                                    Method<&P::TakeVariantArray>("VariantArray", "", ByRef("v")),
                                    Method<&P::TakeStringArray>("StringArray", "", ByRef("v")),
                                });
    return &info;
}

// The canonical text of what the parameter received, or "raise N" for the
// error the binding raised.
std::string Outcome(Probe& probe, const char* type, const Variant& input) {
    Variant arg = input;
    Arguments args{{&arg}, {}, {}};
    try {
        return script::Canonical(probe.invoke(type, InvokeKind::Method, args));
    } catch (const RuntimeError& e) {
        return "raise " + std::to_string(e.number());
    }
}

struct Row {
    const char* label;
    Variant input;
    std::array<const char*, kTypes> expected;  // per column of kColumns
};

// Columns: String, Integer, Long, Single, Double, Currency, Date, Boolean,
// Byte, Object, Variant, Enum (a Long), Variant(), String().
std::vector<Row> Table() {
    const Variant strings(Array(VarType::String, {{0, 1}}));
    const Variant variants(Array(VarType::Variant, {{0, 1}}));
    return {
        {"Empty", Variant(),
         {"String \"\"", "Integer 0", "Long 0", "Single 0", "Double 0", "Currency 0", "Date #1899-12-30#",
          "Boolean False", "Byte 0", "raise 13", "Empty", "Long 0", "raise 13", "raise 13"}},
        {"Null", Variant::null(),
         {"raise 13", "raise 13", "raise 13", "raise 13", "raise 13", "raise 13", "raise 13",
          "raise 13", "raise 13", "raise 13", "Null", "raise 13", "raise 13", "raise 13"}},
        {"missing", Variant::missing(),
         {"raise 449", "raise 449", "raise 449", "raise 449", "raise 449", "raise 449", "raise 449",
          "raise 449", "raise 449", "raise 449", "raise 449", "raise 449", "raise 449", "raise 449"}},
        {"error 5", Variant(ErrorValue{static_cast<std::int32_t>(0x800A0005u)}),
         {"raise 13", "raise 13", "raise 13", "raise 13", "raise 13", "raise 13", "raise 13",
          "raise 13", "raise 13", "raise 13", "Error 5", "raise 13", "raise 13", "raise 13"}},
        {"Integer -32768", Variant(Integer{-32768}),
         {"String \"-32768\"", "Integer -32768", "Long -32768", "Single -32768", "Double -32768", "Currency -32768", "Date #1810-04-13#",
          "Boolean True", "raise 6", "raise 13", "Integer -32768", "Long -32768", "raise 13", "raise 13"}},
        {"Integer 32767", Variant(Integer{32767}),
         {"String \"32767\"", "Integer 32767", "Long 32767", "Single 32767", "Double 32767", "Currency 32767", "Date #1989-09-16#",
          "Boolean True", "raise 6", "raise 13", "Integer 32767", "Long 32767", "raise 13", "raise 13"}},
        {"Long -2147483648", Variant(Long{INT32_MIN}),
         {"String \"-2147483648\"", "raise 6", "Long -2147483648", "Single -2147483648", "Double -2147483648", "Currency -2147483648", "raise 6",
          "Boolean True", "raise 6", "raise 13", "Long -2147483648", "Long -2147483648", "raise 13", "raise 13"}},
        {"Long 2147483647", Variant(Long{INT32_MAX}),
         {"String \"2147483647\"", "raise 6", "Long 2147483647", "Single 2147483648", "Double 2147483647", "Currency 2147483647", "raise 6",
          "Boolean True", "raise 6", "raise 13", "Long 2147483647", "Long 2147483647", "raise 13", "raise 13"}},
        {"Long 32768", Variant(Long{32768}),
         {"String \"32768\"", "raise 6", "Long 32768", "Single 32768", "Double 32768", "Currency 32768", "Date #1989-09-17#",
          "Boolean True", "raise 6", "raise 13", "Long 32768", "Long 32768", "raise 13", "raise 13"}},
        {"Long 256", Variant(Long{256}),
         {"String \"256\"", "Integer 256", "Long 256", "Single 256", "Double 256", "Currency 256", "Date #1900-09-12#",
          "Boolean True", "raise 6", "raise 13", "Long 256", "Long 256", "raise 13", "raise 13"}},
        {"Byte 255", Variant(Byte{255}),
         {"String \"255\"", "Integer 255", "Long 255", "Single 255", "Double 255", "Currency 255", "Date #1900-09-11#",
          "Boolean True", "Byte 255", "raise 13", "Byte 255", "Long 255", "raise 13", "raise 13"}},
        // The first and last day a Date holds (1 January 100, 31 December 9999).
        {"Long -657434", Variant(Long{-657434}),
         {"String \"-657434\"", "raise 6", "Long -657434", "Single -657434", "Double -657434", "Currency -657434", "Date #0100-01-01#",
          "Boolean True", "raise 6", "raise 13", "Long -657434", "Long -657434", "raise 13", "raise 13"}},
        {"Long -657435", Variant(Long{-657435}),
         {"String \"-657435\"", "raise 6", "Long -657435", "Single -657435", "Double -657435", "Currency -657435", "raise 6",
          "Boolean True", "raise 6", "raise 13", "Long -657435", "Long -657435", "raise 13", "raise 13"}},
        {"Long 2958465", Variant(Long{2958465}),
         {"String \"2958465\"", "raise 6", "Long 2958465", "Single 2958465", "Double 2958465", "Currency 2958465", "Date #9999-12-31#",
          "Boolean True", "raise 6", "raise 13", "Long 2958465", "Long 2958465", "raise 13", "raise 13"}},
        {"Long 2958466", Variant(Long{2958466}),
         {"String \"2958466\"", "raise 6", "Long 2958466", "Single 2958466", "Double 2958466", "Currency 2958466", "raise 6",
          "Boolean True", "raise 6", "raise 13", "Long 2958466", "Long 2958466", "raise 13", "raise 13"}},
        {"Single 1.5", Variant(Single{1.5f}),
         {"String \"1,5\"", "Integer 2", "Long 2", "Single 1.5", "Double 1.5", "Currency 1.5", "Date #1899-12-31 12:00:00#",
          "Boolean True", "Byte 2", "raise 13", "Single 1.5", "Long 2", "raise 13", "raise 13"}},
        {"Single max", Variant(FLT_MAX),
         {"String \"3,402823E+38\"", "raise 6", "raise 6", "Single 3.4028235e+38", "Double 3.4028234663852886e+38", "raise 6", "raise 6",
          "Boolean True", "raise 6", "raise 13", "Single 3.4028235e+38", "raise 6", "raise 13", "raise 13"}},
        {"Double 2.5", Variant(2.5),
         {"String \"2,5\"", "Integer 2", "Long 2", "Single 2.5", "Double 2.5", "Currency 2.5", "Date #1900-01-01 12:00:00#",
          "Boolean True", "Byte 2", "raise 13", "Double 2.5", "Long 2", "raise 13", "raise 13"}},
        // Halves go to the even neighbour, so -32768.5 still fits an Integer.
        {"Double -32768.5", Variant(-32768.5),
         {"String \"-32768,5\"", "Integer -32768", "Long -32768", "Single -32768.5", "Double -32768.5", "Currency -32768.5", "Date #1810-04-13 12:00:00#",
          "Boolean True", "raise 6", "raise 13", "Double -32768.5", "Long -32768", "raise 13", "raise 13"}},
        {"Double 32767.5", Variant(32767.5),
         {"String \"32767,5\"", "raise 6", "Long 32768", "Single 32767.5", "Double 32767.5", "Currency 32767.5", "Date #1989-09-16 12:00:00#",
          "Boolean True", "raise 6", "raise 13", "Double 32767.5", "Long 32768", "raise 13", "raise 13"}},
        {"Double 255.5", Variant(255.5),
         {"String \"255,5\"", "Integer 256", "Long 256", "Single 255.5", "Double 255.5", "Currency 255.5", "Date #1900-09-11 12:00:00#",
          "Boolean True", "raise 6", "raise 13", "Double 255.5", "Long 256", "raise 13", "raise 13"}},
        {"Double -0.5", Variant(-0.5),
         {"String \"-0,5\"", "Integer 0", "Long 0", "Single -0.5", "Double -0.5", "Currency -0.5", "Date #1899-12-30 12:00:00#",
          "Boolean True", "Byte 0", "raise 13", "Double -0.5", "Long 0", "raise 13", "raise 13"}},
        {"Double 2147483647.5", Variant(2147483647.5),
         {"String \"2147483647,5\"", "raise 6", "raise 6", "Single 2147483648", "Double 2147483647.5", "Currency 2147483647.5", "raise 6",
          "Boolean True", "raise 6", "raise 13", "Double 2147483647.5", "raise 6", "raise 13", "raise 13"}},
        {"Double 1e300", Variant(1e300),
         {"String \"1E+300\"", "raise 6", "raise 6", "raise 6", "Double 1e+300", "raise 6", "raise 6",
          "Boolean True", "raise 6", "raise 13", "Double 1e+300", "raise 6", "raise 13", "raise 13"}},
        {"Currency max", Variant(Currency{INT64_MAX}),
         {"String \"922337203685477,5807\"", "raise 6", "raise 6", "Single 9.223372e+14", "Double 922337203685477.6", "Currency 922337203685477.5807", "raise 6",
          "Boolean True", "raise 6", "raise 13", "Currency 922337203685477.5807", "raise 6", "raise 13", "raise 13"}},
        {"Boolean True", Variant(true),
         {"String \"True\"", "Integer -1", "Long -1", "Single -1", "Double -1", "Currency -1", "Date #1899-12-29#",
          "Boolean True", "raise 6", "raise 13", "Boolean True", "Long -1", "raise 13", "raise 13"}},
        {"Boolean False", Variant(false),
         {"String \"False\"", "Integer 0", "Long 0", "Single 0", "Double 0", "Currency 0", "Date #1899-12-30#",
          "Boolean False", "Byte 0", "raise 13", "Boolean False", "Long 0", "raise 13", "raise 13"}},
        {"Date 2006-12-25", Variant(Date{39076}),
         {"String \"25/12/2006\"", "raise 6", "Long 39076", "Single 39076", "Double 39076", "Currency 39076", "Date #2006-12-25#",
          "Boolean True", "raise 6", "raise 13", "Date #2006-12-25#", "Long 39076", "raise 13", "raise 13"}},
        {"String 12,5", Variant(u"12,5"),
         {"String \"12,5\"", "Integer 12", "Long 12", "Single 12.5", "Double 12.5", "Currency 12.5", "raise 13",
          "Boolean True", "Byte 12", "raise 13", "String \"12,5\"", "Long 12", "raise 13", "raise 13"}},
        {"String 1.234,5", Variant(u"1.234,5"),
         {"String \"1.234,5\"", "Integer 1234", "Long 1234", "Single 1234.5", "Double 1234.5", "Currency 1234.5", "raise 13",
          "Boolean True", "raise 6", "raise 13", "String \"1.234,5\"", "Long 1234", "raise 13", "raise 13"}},
        {"String  7 ", Variant(u" 7 "),
         {"String \" 7 \"", "Integer 7", "Long 7", "Single 7", "Double 7", "Currency 7", "raise 13",
          "Boolean True", "Byte 7", "raise 13", "String \" 7 \"", "Long 7", "raise 13", "raise 13"}},
        {"String abc", Variant(u"abc"),
         {"String \"abc\"", "raise 13", "raise 13", "raise 13", "raise 13", "raise 13", "raise 13",
          "raise 13", "raise 13", "raise 13", "String \"abc\"", "raise 13", "raise 13", "raise 13"}},
        {"String empty", Variant(u""),
         {"String \"\"", "raise 13", "raise 13", "raise 13", "raise 13", "raise 13", "raise 13",
          "raise 13", "raise 13", "raise 13", "String \"\"", "raise 13", "raise 13", "raise 13"}},
        {"String True", Variant(u"True"),
         {"String \"True\"", "raise 13", "raise 13", "raise 13", "raise 13", "raise 13", "raise 13",
          "Boolean True", "raise 13", "raise 13", "String \"True\"", "raise 13", "raise 13", "raise 13"}},
        // An object is refused by every typed parameter: it is not asked for a default value.
        {"Object", Variant(Object(std::make_shared<Cl_KIV>())),
         {"raise 13", "raise 13", "raise 13", "raise 13", "raise 13", "raise 13", "raise 13",
          "raise 13", "raise 13", "Object Cl_KIV", "Object Cl_KIV", "raise 13", "raise 13", "raise 13"}},
        {"Nothing", Variant(Object()),
         {"raise 13", "raise 13", "raise 13", "raise 13", "raise 13", "raise 13", "raise 13",
          "raise 13", "raise 13", "Nothing", "Nothing", "raise 13", "raise 13", "raise 13"}},
        {"String()", strings,
         {"raise 13", "raise 13", "raise 13", "raise 13", "raise 13", "raise 13", "raise 13",
          "raise 13", "raise 13", "raise 13", "Array(0 To 0) {String \"\"}", "raise 13", "raise 13", "Array(0 To 0) {String \"\"}"}},
        {"Variant()", variants,
         {"raise 13", "raise 13", "raise 13", "raise 13", "raise 13", "raise 13", "raise 13",
          "raise 13", "raise 13", "raise 13", "Array(0 To 0) {Empty}", "raise 13", "Array(0 To 0) {Empty}", "raise 13"}},
    };
}

TEST(Coercion, EveryKindOfArgumentAgainstEveryParameterType) {
    Probe probe;
    for (const Row& row : Table())
        for (std::size_t t = 0; t < kTypes; ++t)
            EXPECT_EQ(Outcome(probe, kColumns[t], row.input), row.expected[t]) << row.label << " into " << kColumns[t];
}

}  // namespace
}  // namespace kiv
