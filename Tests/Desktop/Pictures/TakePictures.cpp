// Opens the window, leads it through its screens and takes a picture of each.

#include "Desktop/Camera/CameraScreen.h"
#include "Desktop/Screens/AlertScreen.h"
#include "Desktop/Screens/ConsentScreen.h"
#include "Desktop/System/Appearance.h"
#include "Desktop/System/CloseQuestion.h"
#include "Platform/Foundation/NSBundle.h"
#include "Platform/Foundation/NSUserDefaults.h"
#include "Platform/Foundation/ProcessSetUp.h"
#include "Platform/Services/Ads/GADFullScreenAdViewController.h"
#include "Platform/Services/Consent/UMPConsentFormViewController.h"
#include "Platform/Services/Deployment.h"
#include "Tests/Desktop/Pictures/PretendedAds.h"
#include "Tests/Desktop/Pictures/Tour.h"
#include "Tests/Support/Environment.h"
#include "Views/Common/ViewHelper.h"

#include <QCommandLineParser>
#include <QCursor>
#include <QDir>
#include <QDragEnterEvent>
#include <QGuiApplication>
#include <QMimeData>
#include <QScreen>

namespace {

using namespace anadrome;
using namespace anadrome::desktop;

/// A camera that sees what is computed.
AVCaptureDevice cameraSeeing(const std::string& source) {
    return {"", "lavfi", source + ",realtime,settb=AVTB,setpts=RTCSTART+N*1000000/30,format=yuyv422", {}};
}

void showTitle(Tour& tour, const QUrl& clip) {
    tour.picture("title");
    QMimeData dragged;
    dragged.setUrls({clip});
    QDragEnterEvent enter({200, 300}, Qt::CopyAction, &dragged, Qt::LeftButton, {});
    QCoreApplication::sendEvent(&tour.window(), &enter);
    tour.picture("drop");
    QDragLeaveEvent leave;
    QCoreApplication::sendEvent(&tour.window(), &leave);
    tour.host().openFile(URL::fileURLWithPath("/nowhere/Holiday.mp4"));
    tour.picture("clip-missing");
    tour.closeAll();
    tour.titleScreen().shareAppButton->tap();
    tour.picture("share-text");
    tour.closeAll();
    tour.titleScreen().infoButton->tap();
    tour.picture("settings");
    tour.host().openClip(clip);
    tour.picture("notice");
    tour.closeAll();
    // It goes by itself.
    runEventLoopFor(5s);
}

void showLibrary(Tour& tour) {
    {
        const testing_support::Environment home("HOME", "/nowhere");
        tour.titleScreen().libraryButton->tap();
        tour.picture("library-empty");
    }
    tour.closeAll();
    tour.titleScreen().libraryButton->tap();
    // The thumbnails are made meanwhile.
    runEventLoopFor(2s);
    tour.picture("library");
    tour.closeAll();
}

void showCamera(Tour& tour) {
    setCaptureDiscovery([] { return AVCaptureDevices{}; });
    tour.titleScreen().cameraButton->tap();
    tour.picture("camera-missing");
    setCaptureDiscovery([] {
        return AVCaptureDevices{{cameraSeeing("mandelbrot=size=640x360:rate=30:start_scale=1.2:maxiter=300"),
                                 cameraSeeing("color")},
                                {}};
    });
    auto& camera = tour.over<CameraScreen>();
    camera.retake();
    Tour::waitFor("the camera", [&] { return camera.state() == CameraScreen::Live; });
    runEventLoopFor(1s);
    tour.picture("camera");
    camera.record();
    Tour::waitFor("a recording", [&] { return camera.elapsed() > 2.5; });
    tour.pictureNow("camera-recording");
    camera.stop();
    Tour::waitFor("the clip", [&] { return camera.state() == CameraScreen::Recorded; });
    tour.picture("camera-review");
    camera.close();
    tour.picture("camera-discard");
    tour.over<AlertScreen>().choose(1);
    Tour::waitFor("the title", [&] { return tour.host().presented()->count() == 0; });
    runEventLoopFor(300ms);
    setCaptureDiscovery({});
}

void showConsentAndAd(Tour& tour) {
    Tour::root()->presentViewController(
        std::make_shared<UMPConsentFormViewController>(
            UMPConsentQuestion{.isRequired = true, .message = "", .purposes = serverWords().purposes}),
        true);
    tour.picture("consent");
    tour.over<ConsentScreen>().manage->tap();
    tour.picture("consent-choose");
    tour.over<ConsentScreen>().refuse->tap();
    const auto ad = std::make_shared<GADFullScreenAdViewController>(GADAdContent{
        .text = serverWords().ad, .link = "https://example.org", .picture = adPicture({1200, 1600})});
    Tour::root()->presentViewController(ad, true);
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
    tour.editScreen().outputTypeSegmentedControl->tap(1);
    tour.editScreen().exifSwitch->tap();
    tour.picture("edit-banner");
    tour.editScreen().exifSwitch->tap();
    Deployment::setCurrent({});
}

void showJob(Tour& tour) {
    Hud& hud = *tour.host().hud();
    tour.editScreen().createButton->tap();
    Tour::waitFor("a part of the movie", [&] { return hud.isVisible() && hud.progress() > 0.25; });
    tour.pictureNow("hud");
    auto& question = *tour.window().property("closeQuestion").value<CloseQuestion*>();
    tour.window().close();
    runEventLoopFor(300ms);
    if (!question.isAsked())
        Tour::fail("The movie was made before the window could be closed");
    tour.pictureNow("close-question");
    question.keepGoing();
    tour.waitForScreen("Preview");
}

void showMovie(Tour& tour) {
    tour.picture("preview");
    tour.press("fullScreenButton");
    tour.picture("preview-full");
    tour.press("fullScreenButton");
    runEventLoopFor(300ms);
    tour.previewScreen().shareButton->tap();
    tour.picture("share");
    tour.closeAll();
    ViewHelper::showHud(tour.root()->view());
    tour.picture("busy");
    ViewHelper::hideHud();
    runEventLoopFor(300ms);
    ViewHelper::errorAlert(NSLocalizedString("error.notEnoughSpace"), *tour.root());
    tour.picture("error");
    tour.closeAll();
    Deployment::setCurrent({.storeAddress = "https://example.org", .storeIdentifier = "1"});
    tour.previewScreen().saveButton->tap();
    Tour::waitFor("the tick", [&] { return tour.host().hud()->kind() == "tick"; });
    tour.picture("saved");
    Tour::waitFor("the question", [&] { return tour.host().presented()->count() > 0; });
    tour.picture("review");
    tour.closeAll();
    Deployment::setCurrent({});
}

/// A deployment with other programs to show.
Deployment withOtherPrograms() {
    return {.storeAddress = "https://example.org", .appStripIdentifiers = {"1", "2", "3", "4", "5"}};
}

} // namespace

int main(int argc, char** argv) {
    setUpProcess(argc, argv);
    QGuiApplication application(argc, argv);
    setUpNumbers();
    QCommandLineParser parser;
    parser.addOptions({{"size", "The window's inside.", "WIDTHxHEIGHT", "420x860"},
                       {"dark", "Dark."},
                       {"other-programs", "Only the title, with the maker's other programs."}});
    parser.addPositionalArgument("clip", "A clip to make a movie of.");
    parser.addPositionalArgument("folder", "Where the pictures go.");
    parser.process(application);
    const QStringList arguments = parser.positionalArguments();
    const QStringList size = parser.value("size").split('x');
    if (arguments.size() != 2 || size.size() != 2)
        parser.showHelp(1);

    // Nothing is hovered.
    QCursor::setPos(QGuiApplication::primaryScreen()->geometry().bottomRight());
    NSUserDefaults::standardUserDefaults().keepInMemory();
    const bool isOfOtherPrograms = parser.isSet("other-programs");
    Deployment::setCurrent(isOfOtherPrograms ? withOtherPrograms() : Deployment{});
    const auto ads = std::make_shared<BannerSource>();
    GADAdSource::setCurrent(ads);
    QDir().mkpath(arguments[1]);
    {
        Tour tour(arguments[1]);
        auto* appearance =
            tour.app().engine().singletonInstance<Appearance*>(qmlTypeId("Anadrome", 1, 0, "Appearance"));
        appearance->setDark(parser.isSet("dark"));
        tour.window().resize(size[0].toInt(), size[1].toInt());
        tour.window().requestActivate();
        runEventLoopFor(500ms);
        if (isOfOtherPrograms) {
            tour.picture("title-with-other-programs");
        } else {
            const QUrl clip = QUrl::fromLocalFile(arguments[0]);
            showTitle(tour, clip);
            showLibrary(tour);
            showCamera(tour);
            showConsentAndAd(tour);
            showEdit(tour, clip, *ads);
            showJob(tour);
            showMovie(tour);
        }
    }
    TemporaryDirectory::remove();
    return 0;
}
