// The form helpers against a window system with a screen, which the driver
// does not have: geometry brought back onto the monitors, a gradient on a
// client area the window system reports, text measured in the control's font.
#include <gtest/gtest.h>

#include <unistd.h>

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "frame/cl_kiv.hpp"
#include "frame/convert.hpp"
#include "frame/errors.hpp"
#include "frame/platform.hpp"
#include "system/posix/posix_platform.hpp"
#include "test_support.hpp"

namespace kiv {
namespace {

namespace fs = std::filesystem;

class ScreenWindows final : public WindowSystem {
public:
    Double twipsPerPixelX() override { return 15.0; }
    Double twipsPerPixelY() override { return 15.0; }
    bool setWindowPos(Long, Long, Long, Long, Long, Long, Long) override { return true; }
    bool killTimer(Long, Long) override { return true; }
    Long findWindow(const String&, const String&) override { return 0; }
    bool setForegroundWindow(Long) override { return true; }
    void sendKeys(const String&) override {}
    Long sendMessage(Long hWnd, Long msg, Long wParam, Long) override {
        calls.push_back("msg " + std::to_string(hWnd) + " " + std::to_string(msg) + " " + std::to_string(wParam));
        return 0;
    }
    bool fillRect(Long, const Rect& r, Long colour) override {
        calls.push_back("fill " + std::to_string(r.left) + " " + std::to_string(r.top) + " " + std::to_string(r.right) +
                        " " + std::to_string(r.bottom) + " " + std::to_string(colour));
        return true;
    }
    // A proportional font: 3 pixels per character in window 1, 10 elsewhere.
    Long textWidth(Long hWnd, const String& text) override {
        return (hWnd == 1 ? 3 : 10) * static_cast<Long>(text.size());
    }
    std::optional<Rect> clientRect(Long) override { return client; }
    std::optional<Rect> virtualScreen() override { return screen; }

    std::optional<Rect> client;
    std::optional<Rect> screen;
    std::vector<std::string> calls;
};

class ScreenPlatform final : public PosixPlatform {
public:
    explicit ScreenPlatform(PlatformSettings s) : PosixPlatform(std::move(s)) {}
    WindowSystem& windows() override { return windows_; }
    ScreenWindows windows_;
};

// A form of a host other than the driver: named properties, nothing else.
class Form final : public Dispatchable {
public:
    explicit Form(std::string type = "Form") : type_(std::move(type)) {}
    std::string typeName() const override { return type_; }
    Variant invoke(std::string_view member, InvokeKind kind, Arguments& args) override {
        const std::string name(member);
        if (kind == InvokeKind::PropertyPut) {
            props[name] = *args.positional.back();
            return Variant();
        }
        auto it = props.find(name);
        if (it == props.end()) Raise(kNotSupported);
        return it->second;
    }
    std::map<std::string, Variant> props;

private:
    std::string type_;
};

class FormsScreen : public ::testing::Test {
protected:
    void SetUp() override {
        drive = fs::temp_directory_path() / ("kiv_forms_" + std::to_string(::getpid()));
        fs::remove_all(drive);
        fs::create_directories(drive / "Windows");
        PlatformSettings settings;
        settings.drives['C'] = drive.string();
        platform_ = std::make_shared<ScreenPlatform>(settings);
        InstallPlatform(platform_);
        // 1920 x 1080 pixels: 28800 x 16200 twips.
        windows().screen = WindowSystem::Rect{0, 0, 1920, 1080};
        form = std::make_shared<Form>();
        form->props = {{"Name", Variant(u"frmClienti")}, {"WindowState", Variant(Integer{0})},
                       {"Left", Variant(Long{30000})}, {"Top", Variant(Long{900})},
                       {"Width", Variant(Long{6000})}, {"Height", Variant(Long{4500})}};
    }
    void TearDown() override {
        InstallPlatform(MakeSystemPlatform(PlatformSettings::fromEnvironment()));
        std::error_code ec;
        fs::remove_all(drive, ec);
    }
    ScreenWindows& windows() { return platform_->windows_; }
    Long prop(const char* name) { return ToLong(form->props.at(name)); }

    fs::path drive;
    std::shared_ptr<ScreenPlatform> platform_;
    std::shared_ptr<Form> form;
    Cl_KIV kiv;
    const String file = u"C:\\geom.ini";
};

TEST_F(FormsScreen, AFormOffTheScreenComesBack) {
    ASSERT_TRUE(kiv.FormSizeSAVE(form, file));
    form->props["Left"] = Variant(Long{0});
    ASSERT_TRUE(kiv.FormSizeLOAD(form, file));
    EXPECT_EQ(prop("Left"), 22800);
    EXPECT_EQ(prop("Top"), 900);
    EXPECT_EQ(prop("Width"), 6000);
}

TEST_F(FormsScreen, TooLargeIsCutToTheScreenAndPlacedAtItsCorner) {
    form->props["Left"] = Variant(Long{-20000});
    form->props["Top"] = Variant(Long{-5});
    form->props["Width"] = Variant(Long{40000});
    form->props["Height"] = Variant(Long{16200});
    ASSERT_TRUE(kiv.FormSizeSAVE(form, file));
    ASSERT_TRUE(kiv.FormSizeLOAD(form, file));
    EXPECT_EQ(prop("Left"), 0);
    EXPECT_EQ(prop("Top"), 0);
    EXPECT_EQ(prop("Width"), 28800);
    EXPECT_EQ(prop("Height"), 16200);  // exactly the screen's height stays
}

TEST_F(FormsScreen, AScreenLeftOfThePrimaryIsKept) {
    windows().screen = WindowSystem::Rect{-1920, 0, 1920, 1080};
    form->props["Left"] = Variant(Long{-28800});
    ASSERT_TRUE(kiv.FormSizeSAVE(form, file));
    ASSERT_TRUE(kiv.FormSizeLOAD(form, file));
    EXPECT_EQ(prop("Left"), -28800);
}

// Only the position is loaded: the form's own size is what must fit.
TEST_F(FormsScreen, PositionAloneFitsTheFormsOwnSize) {
    ASSERT_TRUE(kiv.FormSizeSAVE(form, file));
    form->props["Width"] = Variant(Long{10000});
    ASSERT_TRUE(kiv.FormSizeLOAD(form, file, true));
    EXPECT_EQ(prop("Left"), 18800);
    EXPECT_EQ(prop("Width"), 10000);
}

TEST_F(FormsScreen, OtherScaleModesPaintTheClientArea) {
    form->props["hWnd"] = Variant(Long{5});
    form->props["ScaleMode"] = Variant(Integer{6});  // millimetres
    windows().client = WindowSystem::Rect{0, 0, 40, 3};
    kiv.FadeForm2(form, 0, 255, false, 2);
    EXPECT_EQ(windows().calls, (std::vector<std::string>{"fill 0 0 20 3 0", "fill 20 0 40 3 255"}));
}

TEST_F(FormsScreen, ListsAreMeasuredInTheirOwnFont) {
    auto list = std::make_shared<Form>("VB.ComboBox");
    list->props = {{"ListCount", Variant(Integer{1})}, {"hWnd", Variant(Long{1})}};
    // A Form answers List(i) with the property List whatever the index.
    list->props["List"] = Variant(u"abcd");
    EXPECT_EQ(kiv.GetListWdt(list), 3 * 4 + 8);
    EXPECT_EQ(kiv.AllargaList(list, 1), 21);
    EXPECT_EQ(windows().calls, (std::vector<std::string>{"msg 1 352 21"}));
}

// A list of a host whose controls have no NewIndex: the data goes to the
// last item. Any other error of that read is the host's to see.
class ListWithoutNewIndex final : public Dispatchable {
public:
    std::string typeName() const override { return "ListBox"; }
    Variant invoke(std::string_view member, InvokeKind, Arguments& args) override {
        if (member == "Clear") items.clear();
        else if (member == "AddItem") items.push_back({ToText(*args.positional[0]), 0});
        else if (member == "ListCount") return Variant(static_cast<Integer>(items.size()));
        else if (member == "ItemData")
            items.at(static_cast<std::size_t>(ToLong(*args.positional[0]))).second = ToLong(*args.positional[1]);
        else if (member == "NewIndex" && newIndexError != 0) Raise(newIndexError);
        else Raise(kNotSupported);
        return Variant();
    }
    std::vector<std::pair<String, Long>> items;
    int newIndexError = 0;
};

TEST(FormsLists, WithoutNewIndexTheDataGoesToTheLastItem) {
    Cl_KIV kiv;
    auto list = std::make_shared<ListWithoutNewIndex>();
    EXPECT_EQ(kiv.Pipe2List(u"a#1|b|c#3", list, u"|", true, false, u"#"), 3);
    EXPECT_EQ(list->items, (std::vector<std::pair<String, Long>>{{u"a", 1}, {u"b", 0}, {u"c", 3}}));
    list->newIndexError = kTypeMismatch;
    EXPECT_EQ(testing::ErrorOf([&] { kiv.Pipe2List(u"x#1", list, u"|", true, false, u"#"); }), kTypeMismatch);
}

TEST(FormsPosixSeam, NoScreenNoClientAreaEightPixelsPerCharacter) {
    auto system = MakePosixWindowSystem(PlatformSettings{});
    EXPECT_EQ(system->textWidth(1, u"Milano"), 48);
    EXPECT_FALSE(system->virtualScreen());
    EXPECT_FALSE(system->clientRect(1));
    EXPECT_FALSE(system->fillRect(1, {0, 0, 1, 1}, 0));
    EXPECT_EQ(system->sendMessage(1, 404, 5, 0), 0);
}

}  // namespace
}  // namespace kiv
