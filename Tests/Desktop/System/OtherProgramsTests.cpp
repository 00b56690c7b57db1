// What the share sheet hands to other programs, through portals that the tests play.

#include "Desktop/Screens/AlertScreen.h"
#include "Desktop/Screens/ShareScreen.h"
#include "Platform/UIKit/UIActivityViewController.h"
#include "Tests/Desktop/System/FakeService.h"
#include "Tests/Desktop/Window/WindowTest.h"

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QDBusUnixFileDescriptor>
#include <filesystem>

namespace anadrome::desktop {

namespace fs = std::filesystem;

class OtherProgramsTest : private PrivateBus, public WindowTest {
protected:
    OtherProgramsTest() { write("0a1b2c.mov", "the movie"); }

    ShareScreen& sheet() { return *qobject_cast<ShareScreen*>(over()); }
    void openSheet() {
        const auto controller = std::make_shared<UIActivityViewController>(
            std::vector<UIActivityViewController::Item>{URL::fileURLWithPath(path("0a1b2c.mov"))});
        controller->setCompletionHandler([this](const auto&, bool completed) { m_completed = completed; });
        present(controller);
        ASSERT_TRUE(over() && over()->kind() == "ShareSheet");
    }
    /// Says what came of the question that the portal was asked last.
    void respond(const char* method, uint code) {
        ++m_questions;
        ASSERT_TRUE(waitUntil([&] {
            return m_portal.calls("OpenFile").size() + m_portal.calls("ComposeEmail").size() == m_questions;
        }));
        const QVariantMap options = qdbus_cast<QVariantMap>(m_portal.calls(method).last().arguments().last());
        const QString sender = m_portal.calls(method).last().service().mid(1).replace('.', '_');
        m_portal.tell("/org/freedesktop/portal/desktop/request/" + sender + '/' +
                          options["handle_token"].toString(),
                      "org.freedesktop.portal.Request", "Response", {code, QVariantMap()});
    }
    bool failureIsTold() {
        if (!waitUntil([&] { return over() && over()->kind() == "Alert"; }) || !settle())
            return false;
        press(Qt::Key_Return);
        return waitUntil([&] { return over()->kind() == "ShareSheet"; });
    }

    std::optional<bool> m_completed;
    int m_questions = 0;
    FakeService m_portal{
        *this,
        "org.freedesktop.portal.Desktop",
        {{"org.freedesktop.portal.OpenURI.OpenFile", [] { return QVariantList{handle()}; }},
         {"org.freedesktop.portal.Email.ComposeEmail", [] { return QVariantList{handle()}; }}}};

private:
    static QVariant handle() { return QVariant::fromValue(QDBusObjectPath("/")); }
};

TEST_F(OtherProgramsTest, OpeningWithAnotherProgramEndsTheSheetOnceTheUserHasChosen) {
    openSheet();
    sheet().openWithOtherProgram();
    EXPECT_TRUE(sheet().isBusy());
    respond("OpenFile", 1);
    ASSERT_TRUE(waitUntil([&] { return !sheet().isBusy(); }));
    EXPECT_FALSE(m_completed) << "the user may choose another way";

    sheet().openWithOtherProgram();
    respond("OpenFile", 0);
    EXPECT_TRUE(waitUntil([&] { return m_completed.value_or(false); }));
    const auto file =
        qvariant_cast<QDBusUnixFileDescriptor>(m_portal.calls("OpenFile").last().arguments()[1]);
    const std::string name =
        fs::read_symlink("/proc/self/fd/" + std::to_string(file.fileDescriptor())).filename();
    EXPECT_TRUE(name.starts_with("20") && name.ends_with(".mov")) << name << ": not the name of a work file";
}

TEST_F(OtherProgramsTest, AWayThatFailsIsToldAndTheSheetStays) {
    // Nor are the standard tools to be found.
    const testing_support::Environment path("PATH", "/nowhere");
    openSheet();
    sheet().openWithOtherProgram();
    respond("OpenFile", 2);
    EXPECT_TRUE(failureIsTold());
    sheet().mail();
    respond("ComposeEmail", 2);
    EXPECT_TRUE(failureIsTold());
    sheet().showInFileManager();
    EXPECT_TRUE(failureIsTold());
    sheet().saveCopy(QUrl("smb://server/movie.mov"));
    EXPECT_TRUE(failureIsTold());
    // The name under which it lies among the work files.
    sheet().saveCopy(sheet().file());
    EXPECT_TRUE(failureIsTold());
    EXPECT_FALSE(sheet().isBusy());
    EXPECT_FALSE(m_completed);
}

TEST_F(OtherProgramsTest, WhatWasCopiedCanBePastedWhenTheMovieIsGone) {
    openSheet();
    const std::string shared = sheet().file().toLocalFile().toStdString();
    sheet().copyFile();
    fs::remove(m_folder.file("0a1b2c.mov"));
    EXPECT_EQ(fs::file_size(shared), 9u);
}

} // namespace anadrome::desktop
