#include "Desktop/DesktopHost.h"

#include "Desktop/Screens/HandOver.h"
#include "Desktop/Screens/TitleScreen.h"
#include "Desktop/System/ClipObstacle.h"
#include "Desktop/System/ClipboardFile.h"
#include "Desktop/System/FileAddress.h"
#include "Desktop/Texts.h"
#include "Platform/UIKit/UIApplication.h"
#include "Platform/UIKit/UINavigationController.h"
#include "Platform/UIKit/UIScreen.h"
#include "Views/Common/ViewHelper.h"
#include "Views/Edit/EditViewController.h"
#include "Views/Title/TitleViewController.h"

#include <QClipboard>
#include <QDesktopServices>
#include <QGuiApplication>

namespace anadrome::desktop {

DesktopHost::DesktopHost() {
    UIApplication::sharedApplication().setHost(this);
}

DesktopHost::~DesktopHost() {
    UIApplication::sharedApplication().setHost(nullptr);
}

void DesktopHost::showStack(const std::shared_ptr<UINavigationController>& stack) {
    m_navigation = stack;
    for (const auto& controller : stack->viewControllers())
        add(m_stack, *controller);
}

void DesktopHost::setSize(double width, double height) {
    m_size = {width, height};
    UIScreen::mainScreen().setBounds({{0, 0}, {width, height}});
    for (const ScreenList* list : {&m_stack, &m_presented})
        for (const ShownScreen* screen : list->screens())
            screen->setSize(width, height);
}

bool DesktopHost::acceptsClip() const {
    const QString top = m_stack.top() ? m_stack.top()->kind() : QString();
    return (top == "Title" || top == "Edit") && m_presented.count() == 0 && !isAtWork();
}

bool DesktopHost::isClipWelcome() {
    if (acceptsClip())
        return true;
    Q_EMIT noticeGiven(Texts::of(isAtWork() ? "ClipHasToWaitForJob" : "ClipHasToWait"));
    return false;
}

void DesktopHost::refuseClip(const QString& reason) {
    if (const auto navigation = m_navigation.lock())
        ViewHelper::errorAlert(reason.toStdString(), *navigation->topViewController());
}

void DesktopHost::openClip(const QUrl& clip) {
    if (const std::optional<URL> file = fileAt(clip))
        openFile(*file);
    else if (isClipWelcome())
        refuseClip(Texts::of("ClipIsElsewhere"));
}

void DesktopHost::pasteClip() {
    if (const QMimeData* copied = QGuiApplication::clipboard()->mimeData())
        if (const QUrl file = fileOnClipboard(*copied); !file.isEmpty())
            openClip(file);
}

void DesktopHost::openFile(const URL& clip) {
    const auto navigation = m_navigation.lock();
    if (!navigation || !isClipWelcome())
        return;
    if (const std::optional<QString> obstacle = clipObstacle(clip))
        return refuseClip(*obstacle);
    dynamic_cast<TitleViewController&>(*navigation->viewControllers().front()).openClip(clip);
}

void DesktopHost::back() {
    const auto navigation = m_navigation.lock();
    if (navigation && navigation->view()->canBeTouched() &&
        navigation->topViewController()->view()->canBeTouched() && !isAtWork())
        navigation->popViewControllerAnimated(true);
}

void DesktopHost::add(ScreenList& list, UIViewController& controller) {
    list.append(controller.shared_from_this());
    list.top()->setSize(m_size.width(), m_size.height());
}

void DesktopHost::didPush(UINavigationController&, UIViewController& controller, bool) {
    if (auto* edit = dynamic_cast<EditViewController*>(&controller))
        edit->setJobHandler([weak = std::weak_ptr(m_job)](const auto& job) {
            if (const auto watch = weak.lock())
                watch->follow(job);
        });
    add(m_stack, controller);
}

void DesktopHost::didPop(UINavigationController&,
                         const std::vector<std::shared_ptr<UIViewController>>& popped, bool) {
    for (const auto& controller : popped)
        m_stack.remove(*controller);
}

void DesktopHost::didPresent(UIViewController& presented, bool) {
    if (!handOver(presented))
        add(m_presented, presented);
}

void DesktopHost::didDismiss(UIViewController& dismissed, bool) {
    m_presented.remove(dismissed);
}

void DesktopHost::viewChanged(UIView& view, double duration) {
    m_hud.update();
    for (const ScreenList* list : {&m_stack, &m_presented})
        for (ShownScreen* screen : list->screens())
            screen->noteChange(view, duration);
}

bool DesktopHost::openURL(const std::string& address) {
    return QDesktopServices::openUrl(QUrl(QString::fromStdString(address)));
}

void DesktopHost::requestReview(UIWindowScene&) {
    m_reviewQuestion.request(m_navigation);
}

} // namespace anadrome::desktop
