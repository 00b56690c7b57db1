#include "Platform/UIKit/UINavigationController.h"
#include "Tests/Support/RecordingHost.h"

#include <QCoreApplication>
#include <gtest/gtest.h>

namespace anadrome {

namespace {

using testing_support::RecordingHost;
using Lines = std::vector<std::string>;

/// Writes its life-cycle calls to a common list.
class Screen : public UIViewController {
public:
    Screen(std::string name, Lines& lines) : m_name(std::move(name)), m_lines(lines) {}
    ~Screen() override { note("freed"); }

protected:
    void viewDidLoad() override { note("didLoad"); }
    void viewWillAppear(bool) override { note("willAppear"); }
    void viewDidAppear(bool) override { note("didAppear"); }
    void viewWillDisappear(bool) override { note("willDisappear"); }
    void viewDidDisappear(bool) override { note("didDisappear"); }

private:
    void note(const std::string& call) { m_lines.push_back(m_name + "." + call); }

    const std::string m_name;
    Lines& m_lines;
};

class UIViewControllerTest : public ::testing::Test {
protected:
    std::shared_ptr<Screen> make(const std::string& name) { return std::make_shared<Screen>(name, m_lines); }
    Lines taken() { return std::exchange(m_lines, {}); }

    Lines m_lines;
    RecordingHost m_host;
};

} // namespace

TEST_F(UIViewControllerTest, ScreensComeAndGoInTheirOrder) {
    const auto stack = std::make_shared<UINavigationController>(make("A"));
    m_host.show(stack);
    EXPECT_EQ(taken(), (Lines{"A.didLoad", "A.willAppear", "A.didAppear"}));
    const Lines push{"B.didLoad", "A.willDisappear", "B.willAppear", "A.didDisappear", "B.didAppear"};
    const Lines pop{"B.willDisappear", "A.willAppear", "B.didDisappear", "A.didAppear", "B.freed"};
    stack->viewControllers().front()->showViewController(make("B"));
    EXPECT_EQ(taken(), push);
    stack->popViewControllerAnimated(false);
    EXPECT_EQ(taken(), pop);
    stack->pushViewController(make("B"), false);
    EXPECT_EQ(taken(), push);
    stack->pushViewController(make("C"), true);
    taken();
    stack->popToRootViewControllerAnimated(true);
    EXPECT_EQ(taken(), (Lines{"C.willDisappear", "A.willAppear", "C.didDisappear", "A.didAppear", "B.freed",
                              "C.freed"}));
    EXPECT_EQ(m_host.calls, (Lines{"push animated", "pop 1", "push", "push animated", "pop 2 animated"}));
    m_host.show(nullptr);
    EXPECT_EQ(taken(), (Lines{"A.willDisappear", "A.didDisappear"}));
}

TEST_F(UIViewControllerTest, PresentsOnlyInAWindowAndOneAtATime) {
    const auto root = make("root");
    const auto stack = std::make_shared<UINavigationController>(root);
    int completions = 0;
    const auto count = [&] { ++completions; };
    const auto first = make("first");
    const auto second = make("second");
    root->presentViewController(first, true, count);
    EXPECT_EQ(root->presentedViewController(), nullptr) << "there is no window yet";
    m_host.show(stack);
    taken();
    root->presentViewController(first, true, count);
    EXPECT_EQ(taken(), (Lines{"first.didLoad", "first.willAppear", "first.didAppear"}))
        << "what lies beneath stays where it is";
    root->presentViewController(second, true, count);
    EXPECT_EQ(root->presentedViewController(), first) << "it is presented for all that the stack holds";
    EXPECT_FALSE(root->view()->canBeTouched());
    EXPECT_TRUE(first->view()->canBeTouched());
    first->presentViewController(second, false, count);
    EXPECT_EQ(completions, 0) << "a completion never comes inline";
    QCoreApplication::processEvents();
    EXPECT_EQ(completions, 2) << "a refused one has none";
    taken();
    root->dismissViewControllerAnimated(true, count);
    EXPECT_EQ(taken(), (Lines{"second.willDisappear", "second.didDisappear", "first.willDisappear",
                              "first.didDisappear"}));
    EXPECT_EQ(m_host.calls, (Lines{"present animated", "present", "dismiss animated", "dismiss animated"}));
    EXPECT_TRUE(root->view()->canBeTouched());
}

} // namespace anadrome
