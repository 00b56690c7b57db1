// Launches the app as a front end does, opens a clip, makes a movie of it, and prints how long that took from
// the pick to the Preview screen and how long the main thread stood still at most: "SECONDS SECONDS".

#include "App/AppDelegate.h"
#include "App/DeclareApp.h"
#include "Platform/Foundation/NSUserDefaults.h"
#include "Platform/Foundation/TemporaryDirectory.h"
#include "Platform/Services/Ads/GADFullScreenAdViewController.h"
#include "Platform/UIKit/UIApplication.h"
#include "Platform/UIKit/UIDocumentPickerViewController.h"
#include "Platform/UIKit/UIHost.h"
#include "Platform/UIKit/UINavigationController.h"
#include "Platform/UIKit/UIWindow.h"
#include "Platform/UIKit/UIWindowScene.h"
#include "Platform/UIKit/UIWindowSceneDelegate.h"
#include "Views/Edit/EditViewController.h"
#include "Views/Preview/PreviewViewController.h"
#include "Views/Title/TitleViewController.h"

#include <QCoreApplication>
#include <QTimer>
#include <chrono>
#include <iostream>
#include <malloc.h>

namespace {

using namespace anadrome;
using Clock = std::chrono::steady_clock;

double secondsSince(Clock::time_point start) {
    return std::chrono::duration<double>(Clock::now() - start).count();
}

/// Plays the user: takes the clip, closes what lies over the screens, and ends with the Preview screen.
class Hand final : public UIHost {
public:
    explicit Hand(std::string clip) : m_clip(std::move(clip)) {}

    void pick(UINavigationController& stack) {
        m_start = Clock::now();
        dynamic_cast<TitleViewController&>(*stack.topViewController()).views().iCloudButton->tap();
    }

    void didPush(UINavigationController&, UIViewController& screen, bool) override {
        if (dynamic_cast<EditViewController*>(&screen))
            later(screen, [](UIViewController& edit) {
                dynamic_cast<EditViewController&>(edit).views().createButton->tap();
            });
        if (dynamic_cast<PreviewViewController*>(&screen)) {
            std::cout << secondsSince(m_start) << ' ' << m_longestGap << std::endl;
            QCoreApplication::quit();
        }
    }
    void didPresent(UIViewController& screen, bool) override {
        if (auto* files = dynamic_cast<UIDocumentPickerViewController*>(&screen))
            files->finish({URL::fileURLWithPath(m_clip)});
        else if (dynamic_cast<GADFullScreenAdViewController*>(&screen))
            later(screen, [](UIViewController& ad) { ad.dismissViewControllerAnimated(false); });
    }

    void beat() {
        if (m_lastBeat != Clock::time_point())
            m_longestGap = std::max(m_longestGap, secondsSince(m_lastBeat));
        m_lastBeat = Clock::now();
    }

private:
    static void later(UIViewController& screen, void (*act)(UIViewController&)) {
        QTimer::singleShot(0, [screen = screen.shared_from_this(), act] { act(*screen); });
    }

    const std::string m_clip;
    Clock::time_point m_start;
    Clock::time_point m_lastBeat;
    double m_longestGap = 0;
};

} // namespace

int main(int argc, char** argv) {
    ::mallopt(M_ARENA_MAX, 2);
    QCoreApplication application(argc, argv);
    if (argc != 2) {
        std::cerr << "A clip is to be named" << std::endl;
        return 2;
    }
    Hand hand(argv[1]);
    UIApplication& app = UIApplication::sharedApplication();
    app.setHost(&hand);
    NSUserDefaults::standardUserDefaults().keepInMemory();
    declareApp();
    const auto scene = app.launch(std::make_shared<AppDelegate>());
    scene->moveTo(UISceneActivationState::foregroundActive);
    const auto stack =
        std::dynamic_pointer_cast<UINavigationController>(scene->delegate()->window()->rootViewController());
    QTimer heart;
    QObject::connect(&heart, &QTimer::timeout, [&] { hand.beat(); });
    heart.start(1);
    // The services are at their work by then.
    QTimer::singleShot(300, [&] { hand.pick(*stack); });
    const int exitCode = QCoreApplication::exec();
    app.disconnectScene(scene);
    app.setHost(nullptr);
    TemporaryDirectory::remove();
    return exitCode;
}
