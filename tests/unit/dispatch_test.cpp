// The late-bound calling contract: coercion, defaults, the missing marker,
// by-reference write-back and its absence, errors.
#include <gtest/gtest.h>

#include <memory>
#include <set>

#include "frame/col_kiv.hpp"
#include "frame/dispatch.hpp"
#include "test_support.hpp"

namespace kiv {
namespace {

using kiv::testing::ErrorOf;

// Calls by name as an automation client does; each argument is a variable.
struct Call {
    Cl_KIV& object;
    Arguments args;
    std::vector<std::unique_ptr<Variant>> temps;

    Call& arg(Variant& variable) {
        args.positional.push_back(&variable);
        return *this;
    }
    Call& value(Variant v) {
        temps.push_back(std::make_unique<Variant>(std::move(v)));
        args.positional.push_back(temps.back().get());
        return *this;
    }
    Call& omit() { return value(Variant::missing()); }
    Call& named(std::string name, Variant v) {
        temps.push_back(std::make_unique<Variant>(std::move(v)));
        args.named.emplace_back(std::move(name), temps.back().get());
        return *this;
    }
    Variant run(std::string_view name, InvokeKind kind = InvokeKind::Method) {
        return object.invoke(name, kind, args);
    }
};

class Dispatch : public ::testing::Test {
protected:
    Call call() { return Call{k, {}, {}}; }
    Cl_KIV k;
};

TEST(InterfaceTable, NamesAndIdsAreUniqueAndStable) {
    std::set<std::int32_t> ids;
    for (const Member& m : InterfaceMembers()) {
        EXPECT_TRUE(ids.insert(m.id).second) << m.name;
        EXPECT_GT(m.id, 0) << m.name;
        EXPECT_EQ(FindMember(m.name), &m);
        EXPECT_EQ(m.id, MemberId(m.name));
    }
    EXPECT_EQ(MemberId("FmtNum"), MemberId("FMTNUM"));
    EXPECT_EQ(InterfaceMembers().front().name, "DlK_TimMask");  // member order kept
}

TEST(InterfaceTable, OneListOfCreatableClasses) {
    ASSERT_EQ(CreatableClasses().size(), 2u);
    for (const ClassInfo* c : CreatableClasses()) {
        EXPECT_EQ(FindCreatable(c->progId), c);
        const Object made = c->create();
        EXPECT_EQ(made->typeName(), c->name);
        EXPECT_EQ(made->description(), c);
        std::set<std::int32_t> ids;
        for (const Member& m : c->members) EXPECT_TRUE(ids.insert(m.id).second) << c->name << "." << m.name;
    }
    EXPECT_EQ(FindCreatable("dllkiv.col_kiv"), &ColKivClass());
    EXPECT_EQ(FindCreatable("DLLKiv.Nothing"), nullptr);
    EXPECT_EQ(ColKivClass().findById(kDefaultMemberId)->name, "Item");
    EXPECT_EQ(ColKivClass().findById(kEnumeratorId)->name, "NewEnum");
    EXPECT_TRUE(ColKivClass().find("newenum")->hidden);
    EXPECT_EQ(ClKivClass().findById(kDefaultMemberId), nullptr);  // Cl_KIV has no default member
}

TEST(InterfaceTable, ADescriptionRefusesTwoMembersWithOneId) {
    const auto twice = [](std::int32_t second) {
        return std::vector<Member>{
            Method<&Col_KIV::Count>("Count", "").withId(7),
            Method<&Col_KIV::NewEnum>("NewEnum", "").withId(second),
        };
    };
    EXPECT_NO_THROW(ClassInfo("T", "", nullptr, twice(8)));
    EXPECT_THROW(ClassInfo("T", "", nullptr, twice(7)), std::logic_error);
    EXPECT_THROW(ClassInfo("T", "", nullptr, {Method<&Col_KIV::Count>("Count", ""), Method<&Col_KIV::Count>("COUNT", "")}),
                 std::logic_error);
    Member widest = Method<&Col_KIV::Count>("Widest", "");
    widest.params.resize(kMaxParams);  // the most the call path binds is allowed
    EXPECT_NO_THROW(ClassInfo("T", "", nullptr, {widest}));
}

TEST(InterfaceTable, EveryEnumerationTypeOfTheInterfaceIsDescribed) {
    const std::set<std::string> plain = {"Variant", "String", "Integer", "Long", "Single", "Double", "Currency",
                                         "Date", "Boolean", "Byte", "Object", "Variant()", "String()", ""};
    for (const ClassInfo* c : CreatableClasses())
        for (const Member& m : c->members) {
            for (const ParamSpec& p : m.params)
                if (!plain.contains(p.typeName)) {
                    EXPECT_NE(FindEnumeration(p.typeName), nullptr) << p.typeName;
                }
            if (!plain.contains(m.resultType)) {
                EXPECT_NE(FindEnumeration(m.resultType), nullptr) << m.resultType;
            }
        }
    // Names and values come from the C++ enumerators themselves.
    EXPECT_EQ(FindConstant("cf_bad")->value, CF_Bad);
    EXPECT_EQ(FindConstant("PI_Estera")->value, PI_Estera);
    EXPECT_EQ(FindConstant("SD_UserStartup")->value, SD_UserStartup);
    EXPECT_EQ(FindEnumeration("EnPI_Result")->members.size(), 8u);
    EXPECT_EQ(FindConstant("HKEY_LOCAL_MACHINE")->value, static_cast<Long>(0x80000002u));
    EXPECT_EQ(FindConstant("REG_DWORD")->value, 4);
    EXPECT_EQ(FindConstant("CF_Nothing"), nullptr);
    const RecordInfo& prt = Records().front();
    EXPECT_EQ(prt.fields.size(), 22u);
    EXPECT_STREQ(prt.fields[12].name, "DNo");
    EXPECT_STREQ(prt.fields[12].typeName, "Single");
}

TEST(InterfaceTable, SignaturesShowPassingOptionalAndDefaults) {
    EXPECT_EQ(Signature(*FindMember("allunga")),
              "Allunga(ByVal S As String, ByRef B As Integer, Optional ByRef C As String = \" \") As String");
    EXPECT_EQ(Signature(*FindMember("AllineaDxSpazi")), "AllineaDxSpazi(ByRef Record As String, ByRef fill As String)");
    const Member& ean = *FindMember("BCheck_EAN");
    EXPECT_EQ(ean.params[1].typeName, "En_EANType");
    EXPECT_TRUE(ean.params[1].optional);
    EXPECT_EQ(ean.params[1].defaultValue, Variant(Long{0}));  // a typed optional without default gets its zero
    EXPECT_EQ(Signature(ean), "BCheck_EAN(ByRef BCode As String, Optional ByRef BType As En_EANType) As Integer");
    const Member& mad = *FindMember("MettiADes");
    EXPECT_EQ(mad.params[0].typeName, "Variant");
    EXPECT_EQ(FindMember("ParseWord")->params[1].typeName, "Variant()");
    EXPECT_EQ(FindMember("SplitRows")->params[1].typeName, "String()");
    EXPECT_EQ(FindMember("Is_CFTest")->resultType, "EnCF_Result");
    EXPECT_EQ(FindMember("NoSuchThing"), nullptr);
}

TEST_F(Dispatch, NamesAreCaseBlind) {
    EXPECT_EQ(call().value(u" ab ").value(Integer{4}).run("poniades"), Variant(u"  ab"));
    EXPECT_EQ(ErrorOf([&] { call().run("NoSuchOperation"); }), kNotSupported);
}

TEST_F(Dispatch, ArgumentsAreCoercedToTheDeclaredType) {
    // A Double width and numeric text become Integers; a number becomes text.
    EXPECT_EQ(call().value(u"ab").value(4.0).run("PoniADes"), Variant(u"  ab"));
    EXPECT_EQ(call().value(u"ab").value(u"4").run("PoniADes"), Variant(u"  ab"));
    EXPECT_EQ(call().value(12.5).value(Integer{6}).run("PoniADes"), Variant(u"  12,5"));
    EXPECT_EQ(call().value(u"ab").value(2.5).run("Allunga"), Variant(u"ab"));  // 2.5 rounds to 2
    EXPECT_EQ(call().value(u"ab").value(3.5).run("Allunga"), Variant(u"ab  "));  // 3.5 rounds to 4
    EXPECT_EQ(ErrorOf([&] { call().value(u"ab").value(u"x").run("PoniADes"); }), kTypeMismatch);
    EXPECT_EQ(ErrorOf([&] { call().value(u"ab").value(40000.0).run("PoniADes"); }), kOverflow);
}

TEST_F(Dispatch, NullIntoAStringParameterFailsBeforeTheOperationRuns) {
    Variant record(u"abcdef");
    EXPECT_EQ(ErrorOf([&] { call().arg(record).value(Variant::null()).run("AllineaDxSpazi"); }), kTypeMismatch);
    EXPECT_EQ(record, Variant(u"abcdef"));
    Variant nullRecord = Variant::null();
    EXPECT_EQ(ErrorOf([&] { call().arg(nullRecord).value(u"x").run("AllineaDxSpazi"); }), kTypeMismatch);
    EXPECT_TRUE(nullRecord.isNull());
}

TEST_F(Dispatch, ChangedByReferenceArgumentsAreWrittenBack) {
    Variant record(u"abcdef");
    call().arg(record).value(u"xy").run("AllineaDxSpazi");
    EXPECT_EQ(record, Variant(u"    xy"));
    // A Variant parameter receives the operation's own value and type.
    Variant number(Integer{12});
    EXPECT_EQ(call().arg(number).value(Integer{4}).run("MettiADes"), Variant(u"  12"));
    EXPECT_EQ(number, Variant(u"12"));
    // A typed parameter that changed comes back in the declared type.
    Variant zeros(Long{12});
    call().arg(zeros).value(Integer{2}).run("AllineaSinZeri");
    EXPECT_EQ(zeros, Variant(u"1200"));
}

TEST_F(Dispatch, UnchangedByReferenceArgumentsKeepValueAndType) {
    Variant width(4.0);  // coerced to Integer for the call, but not changed
    Variant text(u" ab ");
    call().arg(text).arg(width).run("PoniADes");
    EXPECT_EQ(width, Variant(4.0));
    EXPECT_EQ(text, Variant(u" ab "));
    // Converted for the call, rewritten with an equal value: still untouched.
    Variant record(Long{123});
    call().arg(record).value(u"123").run("AllineaDxSpazi");
    EXPECT_EQ(record, Variant(Long{123}));
    Variant count(Long{0});
    Variant s(Integer{7});
    call().arg(s).arg(count).run("AllineaSinZeri");
    EXPECT_EQ(s, Variant(Integer{7}));
}

TEST_F(Dispatch, WritesMadeBeforeAFailureReachTheCaller) {
    Variant s(Long{5});
    EXPECT_EQ(ErrorOf([&] { call().arg(s).value(Integer{-1}).run("MettiADes"); }), kInvalidCall);
    EXPECT_EQ(s, Variant(u"5"));
}

TEST_F(Dispatch, OmittedOptionalArgumentsTakeThePublishedDefault) {
    EXPECT_EQ(call().value(u"ab").value(Integer{4}).run("Allunga"), Variant(u"ab  "));
    EXPECT_EQ(call().value(u"ab").value(Integer{4}).omit().run("Allunga"), Variant(u"ab  "));
    EXPECT_EQ(call().value(u"ab").value(Integer{5}).omit().value(true).run("MettiInCentro"), Variant(u"  ab "));
    // An omitted by-reference argument: the default goes to the operation only.
    Variant filler = Variant::missing();
    Variant s(u"7");
    call().arg(s).value(Integer{3}).arg(filler).run("MettiADes");
    EXPECT_TRUE(filler.isMissing());
}

TEST_F(Dispatch, RequiredArgumentsAndArgumentCounts) {
    EXPECT_EQ(ErrorOf([&] { call().value(u"ab").run("PoniADes"); }), kArgumentNotOptional);
    EXPECT_EQ(ErrorOf([&] { call().value(u"ab").omit().run("PoniADes"); }), kArgumentNotOptional);
    EXPECT_EQ(ErrorOf([&] { call().value(u"ab").value(Integer{1}).value(u"x").run("PoniADes"); }),
              kWrongArgumentCount);
}

TEST_F(Dispatch, NamedArguments) {
    EXPECT_EQ(call().named("c", u"-").named("S", u"ab").named("B", Integer{4}).run("Allunga"), Variant(u"ab--"));
    EXPECT_EQ(call().value(u"ab").named("b", Integer{3}).run("Allunga"), Variant(u"ab "));
    EXPECT_EQ(ErrorOf([&] { call().value(u"ab").named("Width", Integer{3}).run("Allunga"); }),
              kNamedArgumentNotFound);
    EXPECT_EQ(ErrorOf([&] { call().value(u"ab").named("S", u"cd").run("Allunga"); }), kWrongArgumentCount);
}

TEST_F(Dispatch, NamedArgumentsByParameterIndex) {
    const Member& allunga = *FindMember("Allunga");
    EXPECT_EQ(ParamId(allunga, "c"), 2);
    EXPECT_EQ(ParamId(allunga, "Width"), -1);
    Variant dash(u"-");
    Variant width(Integer{4});
    Call c = call();
    c.value(u"ab");
    c.args.namedById = {{2, &dash}, {1, &width}};
    EXPECT_EQ(c.run("Allunga"), Variant(u"ab--"));
    Call outside = call();
    outside.value(u"ab");
    outside.args.namedById = {{3, &dash}};
    EXPECT_EQ(ErrorOf([&] { outside.run("Allunga"); }), kNamedArgumentNotFound);
    Call twice = call();
    twice.value(u"ab");
    twice.args.namedById = {{0, &dash}};
    EXPECT_EQ(ErrorOf([&] { twice.run("Allunga"); }), kWrongArgumentCount);
}

// The position of the argument a binding error is about, -1 for none.
int ArgumentOf(auto&& run) {
    try {
        run();
    } catch (const RuntimeError& e) {
        return e.argument();
    }
    return -2;
}

TEST_F(Dispatch, BindingErrorsNameTheArgumentsPosition) {
    EXPECT_EQ(ArgumentOf([&] { call().value(u"ab").value(u"x").run("PoniADes"); }), 1);
    EXPECT_EQ(ArgumentOf([&] { call().value(Variant::null()).value(Integer{1}).run("PoniADes"); }), 0);
    EXPECT_EQ(ArgumentOf([&] { call().value(u"ab").value(40000.0).run("PoniADes"); }), 1);
    EXPECT_EQ(ArgumentOf([&] { call().value(u"ab").named("c", Variant::null()).named("B", Integer{1}).run("Allunga"); }),
              2);
    EXPECT_EQ(ArgumentOf([&] { call().value(u"ab").run("PoniADes"); }), 1);  // required, not given
    // The error number and text stay those of the conversion.
    try {
        call().value(u"ab").value(u"x").run("PoniADes");
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), kTypeMismatch);
        EXPECT_EQ(e.description(), DescribeError(kTypeMismatch));
    }
    // Errors of the operation itself and of the call's shape name no argument.
    EXPECT_EQ(ArgumentOf([&] { call().value(u"5").value(Integer{-1}).run("MettiADes"); }), -1);
    EXPECT_EQ(ArgumentOf([&] { call().value(u"ab").value(Integer{1}).value(u"x").run("PoniADes"); }), -1);
}

TEST_F(Dispatch, MembersAreReachedByIdToo) {
    Col_KIV col;
    Variant mask(Object(std::make_shared<Cl_KIV>()));
    Variant key(u"K");
    Arguments add{{&mask, &key}, {}, {}};
    const Variant added = col.invoke("Add", InvokeKind::Method, add);
    Variant lower(u"k");
    Arguments item{{&lower}, {}, {}};
    EXPECT_EQ(col.invokeById(kDefaultMemberId, InvokeKind::PropertyGet, item), added);
    Arguments none;
    EXPECT_EQ(col.invokeById(kEnumeratorId, InvokeKind::PropertyGet, none).array()->at({1}), added);
    EXPECT_EQ(ErrorOf([&] { k.invokeById(kDefaultMemberId, InvokeKind::Method, none); }), kNotSupported);
    Arguments text{{&key}, {}, {}};
    EXPECT_EQ(k.invokeById(FindMember("NoPunt")->id, InvokeKind::Method, text), Variant(u"K"));
}

TEST_F(Dispatch, ObjectSlotsAreProperties) {
    EXPECT_EQ(call().run("DlK_DatMask", InvokeKind::PropertyGet), Variant(Object()));
    auto other = std::make_shared<Cl_KIV>();
    call().value(Object(other)).run("dlk_datmask", InvokeKind::PropertyPutRef);
    EXPECT_EQ(k.DlK_DatMask, other);
    EXPECT_EQ(call().run("DlK_DatMask", InvokeKind::PropertyGet), Variant(Object(other)));
    EXPECT_EQ(k.DlK_TimMask, nullptr);
    EXPECT_EQ(ErrorOf([&] { call().value(u"text").run("DlK_TimMask", InvokeKind::PropertyPutRef); }),
              kObjectRequired);
    // A put as automation clients make it: the value comes as the named argument of the put.
    auto timer = std::make_shared<Cl_KIV>();
    Variant slot(Object{timer});
    Call put = call();
    put.args.namedById = {{-3, &slot}};
    put.run("DlK_TimMask", InvokeKind::PropertyPutRef);
    EXPECT_EQ(k.DlK_TimMask, timer);
}


// What `kiv list` and the type library publish: a Double default keeps one
// decimal, the zero Date reads as midnight, an object property is Set and a
// value one Let, a property without parameters has no parentheses while one
// with parameters keeps them.
TEST(InterfaceTable, SignaturesPublishDefaultsAndProperties) {
    EXPECT_EQ(Signature(*FindMember("Incr")), "Incr(ByRef NumVar As Variant, Optional ByRef QtaIncr As Double = 1.0)");
    EXPECT_EQ(Signature(*FindMember("ToDate")),
              "ToDate(ByRef cData As String, Optional ByRef Defau As Date = #00:00:00#) As Date");
    EXPECT_EQ(Signature(*FindMember("Num2Base")),
              "Num2Base(ByVal N As Variant, ByVal Base As Integer, Optional ByVal Lun As Integer = 0) As String");
    EXPECT_EQ(Signature(*FindMember("DlK_DatMask")), "DlK_DatMask As Object (property: get, Set)");
    EXPECT_EQ(Signature(*FindMember("DlK_PCName")), "DlK_PCName As String (property: get, Let)");
    EXPECT_EQ(Signature(*ColKivClass().find("Count")), "Count As Long (property: get)");
    EXPECT_EQ(Signature(*ColKivClass().find("Item")),
              "Item(ByRef vntIndexKey As Variant) As Object (property: get, default member)");
}

}  // namespace
}  // namespace kiv
