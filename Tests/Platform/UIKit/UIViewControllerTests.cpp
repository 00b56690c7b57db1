#include "Platform/UIKit/UIActivityViewController.h"
#include "Platform/UIKit/UIAlertController.h"
#include "Platform/UIKit/UINavigationController.h"
#include "Platform/UIKit/UITabBarController.h"
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
    const std::weak_ptr<UINavigationController> watched = stack;
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
    EXPECT_EQ(stack->popViewControllerAnimated(true), nullptr) << "the root stays";
    EXPECT_EQ(m_host.calls, (Lines{"push animated", "pop 1", "push", "push animated", "pop 2 animated"}));
    m_host.show(nullptr);
    EXPECT_EQ(taken(), (Lines{"A.willDisappear", "A.didDisappear"}));
}

TEST_F(UIViewControllerTest, APoppedScreenStillKnowsItsStackAsItGoes) {
    class Leaving : public UIViewController {
    public:
        std::size_t depthAsItWent = 0;

    protected:
        void viewWillDisappear(bool) override {
            navigationController()->interactivePopGestureRecognizer()->setEnabled(true);
            depthAsItWent = navigationController()->viewControllers().size();
        }
    };
    const auto stack = std::make_shared<UINavigationController>(make("A"));
    m_host.show(stack);
    const auto leaving = std::make_shared<Leaving>();
    stack->pushViewController(leaving, false);
    stack->interactivePopGestureRecognizer()->setEnabled(false);
    EXPECT_EQ(stack->popViewControllerAnimated(false), leaving);
    EXPECT_TRUE(stack->interactivePopGestureRecognizer()->isEnabled());
    EXPECT_EQ(leaving->depthAsItWent, 1u);
    EXPECT_EQ(leaving->navigationController(), nullptr);
}

TEST_F(UIViewControllerTest, ChildrenAppearWithTheirParentAndOnlyShownOnes) {
    const auto parent = make("parent");
    parent->addChildViewController(make("child"));
    const auto tabs = std::make_shared<UITabBarController>(
        std::vector<std::shared_ptr<UIViewController>>{parent, make("other")});
    m_host.show(tabs);
    EXPECT_EQ(taken(), (Lines{"parent.didLoad", "parent.willAppear", "child.didLoad", "child.willAppear",
                              "parent.didAppear", "child.didAppear"}));
    tabs->setSelectedIndex(1);
    EXPECT_EQ(taken(),
              (Lines{"other.didLoad", "parent.willDisappear", "child.willDisappear", "other.willAppear",
                     "parent.didDisappear", "child.didDisappear", "other.didAppear"}));
}

TEST_F(UIViewControllerTest, TheBackSwipeNeedsItsRecogniserAndAScreenBelow) {
    const auto stack = std::make_shared<UINavigationController>(make("A"));
    m_host.show(stack);
    stack->swipeBack();
    EXPECT_EQ(stack->viewControllers().size(), 1u);
    stack->pushViewController(make("B"), true);
    stack->interactivePopGestureRecognizer()->setEnabled(false);
    stack->swipeBack();
    EXPECT_EQ(stack->viewControllers().size(), 2u);
    stack->interactivePopGestureRecognizer()->setEnabled(true);
    stack->swipeBack();
    EXPECT_EQ(stack->viewControllers().size(), 1u);
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
    stack->presentViewController(second, true, count);
    EXPECT_EQ(stack->presentedViewController(), first);
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
    QCoreApplication::processEvents();
    EXPECT_EQ(completions, 3);
    root->presentViewController(first, false);
    first->dismissViewControllerAnimated(false);
    EXPECT_EQ(root->presentedViewController(), nullptr) << "the presented one may dismiss itself";
}

TEST_F(UIViewControllerTest, DialogsAndSheetsAnswerAfterTheyHaveGone) {
    const auto root = make("root");
    m_host.show(root);
    Lines answers;
    const auto answer = [&](const std::string& text) {
        answers.push_back(text + (root->presentedViewController() ? " too early" : ""));
    };
    const auto alert = std::make_shared<UIAlertController>("Title", "Text", UIAlertControllerStyle::alert);
    alert->addAction({"No", UIAlertActionStyle::cancel, {}});
    alert->addAction({"Yes", UIAlertActionStyle::normal, [&] { answer("yes"); }});
    alert->chooseAction(1);
    for (const std::size_t choice : {0, 1}) {
        root->presentViewController(alert, true);
        alert->chooseAction(choice);
        QCoreApplication::processEvents();
    }
    const auto sheet = std::make_shared<UIActivityViewController>(
        std::vector<UIActivityViewController::Item>{std::string("text")});
    sheet->setCompletionHandler([&](const std::optional<std::string>& activity, bool completed) {
        answer(activity.value_or("none") + (completed ? " done" : ""));
    });
    for (const auto& [activity, completed] :
         {std::pair<std::optional<std::string>, bool>{"mail", true}, {std::nullopt, false}}) {
        root->presentViewController(sheet, true);
        sheet->finish(activity, completed);
        QCoreApplication::processEvents();
    }
    EXPECT_EQ(answers, (Lines{"yes", "mail done", "none"}));
}

TEST_F(UIViewControllerTest, NothingOutlivesItsOwner) {
    std::weak_ptr<UIViewController> watched[3];
    {
        const auto stack = std::make_shared<UINavigationController>(make("A"));
        const auto shown = make("B");
        m_host.show(stack);
        stack->pushViewController(shown, true);
        const auto presented = make("C");
        shown->presentViewController(presented, true);
        watched[0] = stack;
        watched[1] = shown;
        watched[2] = presented;
    }
    m_host.show(nullptr);
    for (const auto& controller : watched)
        EXPECT_TRUE(controller.expired());
    EXPECT_TRUE(m_host.window()->subviews().empty());
}

} // namespace anadrome
