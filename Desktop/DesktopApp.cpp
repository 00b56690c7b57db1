#include "Desktop/DesktopApp.h"

#include "App/AppDelegate.h"
#include "App/DeclareApp.h"
#include "Desktop/IconProvider.h"
#include "Desktop/PictureProvider.h"
#include "Desktop/Surfaces/SoundDevice.h"
#include "Desktop/System/BringForward.h"
#include "Platform/AVFoundation/SoundSink.h"
#include "Platform/Foundation/Print.h"
#include "Platform/UIKit/UIApplication.h"
#include "Platform/UIKit/UINavigationController.h"
#include "Platform/UIKit/UIWindow.h"
#include "Platform/UIKit/UIWindowSceneDelegate.h"

namespace anadrome::desktop {

DesktopApp::DesktopApp() {
    launch();
    showWindow();
    stayAwakeDuringJobs();
}

DesktopApp::~DesktopApp() {
    m_window->hide();
    m_jobNotice.reset();
    // The storyboards go before the screens that they show.
    m_engine.reset();
    UIApplication::sharedApplication().disconnectScene(m_scene);
}

void DesktopApp::launch() {
    setSoundSinkFactory(openSoundDevice);
    declareApp();
    m_scene = UIApplication::sharedApplication().launch(std::make_shared<AppDelegate>());
    const auto stack = std::dynamic_pointer_cast<UINavigationController>(
        m_scene->delegate()->window()->rootViewController());
    if (!stack)
        fatalError("The first storyboard doesn't begin with a stack");
    m_host.showStack(stack);
}

void DesktopApp::showWindow() {
    m_engine->addImageProvider("icons", new IconProvider);
    m_engine->addImageProvider("pictures", new PictureProvider);
    m_engine->addImportPath(":/");
    m_engine->setInitialProperties(
        {{"host", QVariant::fromValue(&m_host)}, {"closeQuestion", QVariant::fromValue(&m_closeQuestion)}});
    m_engine->load("qrc:/Anadrome/qml/Main.qml");
    if (m_engine->rootObjects().isEmpty())
        fatalError("The window's storyboard can't be loaded");
    m_window = qobject_cast<QQuickWindow*>(m_engine->rootObjects().first());
    QObject::connect(m_window, &QWindow::activeChanged, m_window, [this] { followAttention(); });
    QObject::connect(m_window, &QWindow::visibilityChanged, m_window, [this] { followAttention(); });
    followAttention();
    m_jobNotice.emplace(*m_host.job(), *m_window);
}

void DesktopApp::stayAwakeDuringJobs() {
    const JobWatch* job = m_host.job();
    QObject::connect(job, &JobWatch::runningChanged, job, [this, job] {
        m_sleepHold.reset();
        if (job->isRunning())
            m_sleepHold.emplace();
    });
}

void DesktopApp::startAgain(const StartRequest& request) {
    bringForward(*m_window, request.activationToken);
    if (!request.clip.empty())
        m_host.openFile(request.clip);
}

void DesktopApp::followAttention() {
    m_scene->moveTo(attention());
}

UISceneActivationState DesktopApp::attention() const {
    if (!m_window->isVisible() || m_window->visibility() == QWindow::Minimized)
        return UISceneActivationState::background;
    // Their file dialogs are windows of the desktop, and yet the user doesn't leave the program for them.
    const ShownScreen* over = m_host.presented()->top();
    const bool mayBeInDialog = over && (over->kind() == "Files" || over->kind() == "ShareSheet");
    return m_window->isActive() || mayBeInDialog ? UISceneActivationState::foregroundActive
                                                 : UISceneActivationState::foregroundInactive;
}

} // namespace anadrome::desktop
