// The form helpers against the window seam itself: the screen's scale comes
// from the seam, any object reached by member name serves as a form, and the
// POSIX system has no window system to find.
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "frame/cl_kiv.hpp"
#include "frame/errors.hpp"
#include "test_support.hpp"

namespace kiv {
namespace {

// A window system at 120 dpi (12 twips per pixel) that records its calls.
class RecordingWindows final : public WindowSystem {
public:
    Double twipsPerPixelX() override { return 12.0; }
    Double twipsPerPixelY() override { return 18.0; }
    bool setWindowPos(Long hWnd, Long after, Long x, Long y, Long cx, Long cy, Long flags) override {
        calls.push_back("pos " + std::to_string(hWnd) + " " + std::to_string(after) + " " + std::to_string(x) + " " +
                        std::to_string(y) + " " + std::to_string(cx) + " " + std::to_string(cy) + " " +
                        std::to_string(flags));
        return false;  // a refusal is not looked at
    }
    bool killTimer(Long hWnd, Long id) override {
        calls.push_back("kill " + std::to_string(hWnd) + " " + std::to_string(id));
        return false;
    }
    Long findWindow(const String&, const String& title) override {
        calls.push_back("find");
        return title.empty() ? dialog : 0;
    }
    bool setForegroundWindow(Long hWnd) override {
        calls.push_back("front " + std::to_string(hWnd));
        return true;
    }
    void sendKeys(const String&) override { calls.push_back("keys"); }
    Long sendMessage(Long, Long, Long, Long) override { return 0; }
    bool fillRect(Long, const Rect&, Long) override { return false; }
    Long textWidth(Long, const String&) override { return 0; }
    std::optional<Rect> clientRect(Long) override { return std::nullopt; }
    std::optional<Rect> virtualScreen() override { return std::nullopt; }

    Long dialog = 0;
    std::vector<std::string> calls;
};

class WithWindows final : public PosixPlatform {
public:
    WithWindows() : PosixPlatform(PlatformSettings::fromEnvironment()) {}
    WindowSystem& windows() override { return windows_; }
    RecordingWindows windows_;
};

// A form that is not one of the driver's objects: it answers the five
// members and logs which it was asked for.
class Form final : public Dispatchable {
public:
    std::string typeName() const override { return "Form"; }
    Variant invoke(std::string_view member, InvokeKind kind, Arguments&) override {
        if (kind != InvokeKind::PropertyGet) Raise(kNotSupported);
        asked.emplace_back(member);
        if (member == "hWnd") return Variant(Long{77});
        if (member == "Left") return Variant(Double{1206});  // 100.5 pixels
        if (member == "Top") return Variant(Integer{27});      // 1.5 pixels
        if (member == "Width") return Variant(Long{6000});
        if (member == "Height" && hasHeight) return Variant(Long{4500});
        Raise(kNotSupported);
    }
    bool hasHeight = true;
    std::vector<std::string> asked;
};

class FormsWindow : public ::testing::Test {
protected:
    void SetUp() override {
        platform_ = std::make_shared<WithWindows>();
        InstallPlatform(platform_);
    }
    void TearDown() override { testing::RestoreHost(); }
    std::vector<std::string>& calls() { return platform_->windows_.calls; }
    std::shared_ptr<WithWindows> platform_;
    Cl_KIV kiv;
};

TEST_F(FormsWindow, ScaleComesFromTheSeamPerAxis) {
    auto form = std::make_shared<Form>();
    kiv.FormPrimoPiano(form, true);
    EXPECT_EQ(calls(), (std::vector<std::string>{"pos 77 -1 100 2 500 250 80"}));
    EXPECT_EQ(form->asked, (std::vector<std::string>{"hWnd", "Left", "Top", "Width", "Height"}));
}

TEST_F(FormsWindow, MissingMemberStopsBeforeTheWindowSystem) {
    auto form = std::make_shared<Form>();
    form->hasHeight = false;
    EXPECT_EQ(testing::ErrorOf([&] { kiv.FormPrimoPiano(form, false); }), kNotSupported);
    EXPECT_TRUE(calls().empty());
}

TEST_F(FormsWindow, OnlyAPositiveHandleIsConfirmed) {
    platform_->windows_.dialog = -5;
    kiv.TimerProc(1, 0, 20480, 0);
    EXPECT_EQ(calls(), (std::vector<std::string>{"kill 1 20480", "find"}));
    calls().clear();
    platform_->windows_.dialog = 9;
    kiv.TimerProc(1, 0, 20480, 0);
    EXPECT_EQ(calls(), (std::vector<std::string>{"kill 1 20480", "find", "front 9", "keys"}));
}

// Without a window system the helpers do nothing and find nothing.
TEST(FormsPosix, NoWindowSystem) {
    auto system = MakePosixWindowSystem(PlatformSettings{});
    EXPECT_EQ(system->twipsPerPixelX(), 15.0);
    EXPECT_EQ(system->twipsPerPixelY(), 15.0);
    EXPECT_EQ(system->findWindow(u"#32770", u""), 0);
    EXPECT_FALSE(system->setWindowPos(1, -1, 0, 0, 0, 0, 80));
}

}  // namespace
}  // namespace kiv
