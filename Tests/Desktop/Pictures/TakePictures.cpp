// Opens the window, leads it through its screens and takes a picture of each.

#include "Desktop/DesktopApp.h"
#include "Desktop/Items/ControlItems.h"
#include "Desktop/Items/TextItems.h"
#include "Desktop/System/Appearance.h"
#include "Platform/Dispatch/DispatchQueue.h"
#include "Platform/Foundation/NSUserDefaults.h"
#include "Platform/Foundation/ProcessSetUp.h"
#include "Platform/Foundation/TemporaryDirectory.h"
#include "Platform/Services/Ads/GADAdSource.h"
#include "Platform/Services/Ads/GADFullScreenAdViewController.h"
#include "Platform/Services/Consent/UMPConsentFormViewController.h"
#include "Platform/Services/Deployment.h"
#include "Platform/UIKit/UIApplication.h"
#include "Platform/UIKit/UIWindow.h"
#include "Tests/Support/EventLoop.h"
#include "Views/Common/ViewHelper.h"

#include <QBuffer>
#include <QCommandLineParser>
#include <QDir>
#include <QGuiApplication>
#include <QPainter>
#include <QQuickItem>
#include <iostream>

namespace {

using namespace anadrome;
using namespace anadrome::desktop;
using namespace std::chrono_literals;
using testing_support::runEventLoopFor;
using testing_support::runEventLoopUntil;

/// An ad's picture of its own making.
std::string adPicture(QSize size) {
    QImage image(size, QImage::Format_RGB32);
    QPainter painter(&image);
    QLinearGradient sky(0, 0, size.width(), size.height());
    sky.setColorAt(0, "#3B2A63");
    sky.setColorAt(1, "#E0719B");
    painter.fillRect(image.rect(), sky);
    painter.setPen(QPen(Qt::white, size.height() / 12.0));
    painter.drawEllipse(image.rect().center(), size.height() / 4, size.height() / 4);
    painter.end();
    QBuffer buffer;
    image.save(&buffer, "PNG");
    return buffer.data().toStdString();
}

/// Has a banner for every screen that asks for one, if it is wanted, and no other ads.
class BannerSource final : public GADAdSource {
public:
    bool hasBanner = false;

    void fetch(const GADAdPlace& place, const GADRequest&, Completion completion) override {
        DispatchQueue::main().async([this, completion = std::move(completion), format = place.format] {
            if (hasBanner && format == GADAdFormat::banner)
                completion(GADAdContent{.text = "A banner of nobody’s",
                                        .link = "https://example.org",
                                        .picture = adPicture({320, 100})});
            else
                completion(NSError(GADErrorDomain, GADErrorNoFill, "There is no ad."));
        });
    }
};

/// The program in its window, and the folder that the pictures go to.
class Tour {
public:
    explicit Tour(QString folder) : m_folder(std::move(folder)) {}

    DesktopApp& app() { return m_app; }
    ShownScreen& screen() { return *m_app.host().stack()->top(); }
    template <class Item>
    Item& view(const char* name) {
        auto* item = qobject_cast<Item*>(screen().view(name));
        if (!item)
            fail(QString("There is no ") + name);
        return *item;
    }
    void tap(const char* button) { view<ButtonItem>(button).tap(); }
    std::shared_ptr<UIViewController> root() const {
        return UIApplication::sharedApplication().windows().at(0)->rootViewController();
    }

    template <typename Condition>
    void waitFor(const char* what, Condition holds) {
        if (!runEventLoopUntil(holds))
            fail(QString("Waited in vain for ") + what);
    }
    void waitForScreen(const QString& kind) {
        waitFor("a screen", [&] { return screen().kind() == kind && !m_app.host().hud()->isVisible(); });
        runEventLoopFor(600ms);
    }
    void openClip(const QUrl& clip) {
        m_app.host().openClip(clip);
        waitForScreen("Edit");
        waitFor("the clip to run", [&] { return view<SliderItem>("videoSeekBar").value() > 0.5; });
    }
    void closeAll() {
        while (ShownScreen* over = m_app.host().presented()->top()) {
            over->close();
            runEventLoopFor(50ms);
        }
        runEventLoopFor(300ms);
    }

    /// What the window shows when its movements are over.
    void picture(const QString& name) {
        runEventLoopFor(600ms);
        pictureNow(name);
    }
    void pictureNow(const QString& name) {
        const QString file =
            QString("%1/%2-%3.png").arg(m_folder).arg(++m_count, 2, 10, QChar('0')).arg(name);
        if (!m_app.window().grabWindow().save(file))
            fail("Can't write " + file);
    }

    [[noreturn]] static void fail(const QString& message) {
        std::cerr << message.toStdString() << '\n';
        TemporaryDirectory::remove();
        std::exit(1);
    }

private:
    const QString m_folder;
    int m_count = 0;
    DesktopApp m_app;
};

void showTitle(Tour& tour) {
    tour.picture("title");
    tour.tap("infoButton");
    tour.picture("settings");
    tour.closeAll();
    tour.tap("shareAppButton");
    tour.picture("share-text");
    tour.closeAll();
}

void showPickers(Tour& tour) {
    tour.tap("libraryButton");
    // The thumbnails are made meanwhile.
    runEventLoopFor(2s);
    tour.picture("library");
    tour.closeAll();
    tour.tap("cameraButton");
    tour.picture("camera-missing");
    tour.closeAll();
}

void showConsentAndAd(Tour& tour) {
    tour.root()->presentViewController(
        std::make_shared<UMPConsentFormViewController>(UMPConsentQuestion{
            .isRequired = true,
            .message = "",
            .purposes = {{"selection", "Choose ads by interests"}, {"counting", "Count who saw an ad"}}}),
        true);
    tour.picture("consent");
    auto& consent = *tour.app().host().presented()->top();
    qobject_cast<ButtonItem*>(consent.view("consentManage"))->tap();
    tour.picture("consent-choose");
    qobject_cast<ButtonItem*>(consent.view("consentRefuse"))->tap();
    const auto ad = std::make_shared<GADFullScreenAdViewController>(
        GADAdContent{.text = "Nobody’s next adventure. Look at it now!",
                     .link = "https://example.org",
                     .picture = adPicture({1200, 1600})});
    tour.root()->presentViewController(ad, true);
    tour.picture("ad");
    ad->close();
    runEventLoopFor(300ms);
}

void showEdit(Tour& tour, const QUrl& clip, BannerSource& ads) {
    tour.openClip(clip);
    tour.picture("edit");
    ads.hasBanner = true;
    Deployment::setCurrent({.bannerAdUnitID = "banner"});
    tour.openClip(clip);
    ads.hasBanner = false;
    tour.view<SegmentsItem>("outputTypeSegmentedControl").tap(1);
    qobject_cast<SwitchItem*>(tour.screen().view("exifSwitch"))->tap();
    tour.picture("edit-banner");
    qobject_cast<SwitchItem*>(tour.screen().view("exifSwitch"))->tap();
    Deployment::setCurrent({});
    ViewHelper::errorAlert("The movie couldn’t be made: there is no room left on the disk.", *tour.root());
    tour.picture("error");
    tour.closeAll();
}

void showJobAndMovie(Tour& tour) {
    Hud& hud = *tour.app().host().hud();
    tour.tap("createButton");
    tour.waitFor("half a movie", [&] { return hud.isVisible() && hud.progress() > 0.35; });
    tour.pictureNow("hud");
    tour.waitForScreen("Preview");
    tour.picture("preview");
    tour.tap("shareButton");
    tour.picture("share");
    tour.closeAll();
    tour.tap("saveButton");
    tour.waitFor("the tick", [&] { return hud.isVisible() && hud.kind() == "tick"; });
    tour.picture("saved");
}

} // namespace

int main(int argc, char** argv) {
    setUpProcess(argc, argv);
    QGuiApplication application(argc, argv);
    setUpNumbers();
    QCommandLineParser parser;
    parser.addOptions({{"size", "The window's inside.", "WIDTHxHEIGHT", "420x860"}, {"dark", "Dark."}});
    parser.addPositionalArgument("clip", "A clip to make a movie of.");
    parser.addPositionalArgument("folder", "Where the pictures go.");
    parser.process(application);
    const QStringList arguments = parser.positionalArguments();
    const QStringList size = parser.value("size").split('x');
    if (arguments.size() != 2 || size.size() != 2)
        parser.showHelp(1);

    NSUserDefaults::standardUserDefaults().keepInMemory();
    Deployment::setCurrent({});
    const auto ads = std::make_shared<BannerSource>();
    GADAdSource::setCurrent(ads);
    QDir().mkpath(arguments[1]);
    {
        Tour tour(arguments[1]);
        auto* appearance =
            tour.app().engine().singletonInstance<Appearance*>(qmlTypeId("Anadrome", 1, 0, "Appearance"));
        appearance->setDark(parser.isSet("dark"));
        tour.app().window().resize(size[0].toInt(), size[1].toInt());
        tour.app().window().requestActivate();
        runEventLoopFor(500ms);
        showTitle(tour);
        showPickers(tour);
        showConsentAndAd(tour);
        showEdit(tour, QUrl::fromLocalFile(arguments[0]), *ads);
        showJobAndMovie(tour);
    }
    TemporaryDirectory::remove();
    return 0;
}
