// Clips that are brought to the window: dropped, pasted, named at the start.

#include "Desktop/Screens/AlertScreen.h"
#include "Desktop/System/ClipFiles.h"
#include "Desktop/System/ClipboardFile.h"
#include "Tests/Desktop/Window/WindowTest.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <filesystem>
#include <fstream>
#include <sys/stat.h>

namespace anadrome::desktop {

using IntakeTest = WindowTest;

TEST_F(IntakeTest, WhatCannotBeAClipEndsInADialogOverTheScreenThatIsOpen) {
    ASSERT_EQ(::mkfifo(path("pipe.mp4").c_str(), 0600), 0);
    const std::pair<QString, QString> cases[] = {
        {"file://" + QString::fromStdString(path("gone.mp4")), "There is no file named “gone.mp4”."},
        {"file://" + QString::fromStdString(m_folder.path()), "is a folder"},
        {"file://" + QString::fromStdString(path("pipe.mp4")), "can’t be read"},
        {"file://elsewhere/clip.mp4", "on this computer"},
        {"https://example.com/clip.mp4", "on this computer"},
    };
    for (const auto& [address, words] : cases) {
        SCOPED_TRACE(address.toStdString());
        host().openClip(QUrl(address));
        const auto* alert = qobject_cast<AlertScreen*>(over());
        ASSERT_TRUE(alert);
        EXPECT_TRUE(alert->message().contains(words)) << alert->message().toStdString();
        settle();
        press(Qt::Key_Return);
        ASSERT_TRUE(waitUntil([&] { return !over(); }));
        EXPECT_EQ(screen().kind(), "Title");
    }
}

TEST_F(IntakeTest, TheFileDialogTellsWhatIsElsewhereAndKeepsTheBytesOfNames) {
    const std::string name = path("\xE9t\xE9.mp4"); // not UTF-8
    std::filesystem::rename(clip("clip.mp4", {.width = 128, .height = 72, .frames = 30}), name);
    const auto choose = [&](const QByteArray& address) {
        click("iCloudButton");
        ASSERT_TRUE(over() && over()->kind() == "Files");
        qobject_cast<FilesScreen*>(over())->accept({QUrl::fromEncoded(address)});
        // Newer Qt's own dialog is a separate window. A window manager returns the focus when it closes.
        window().requestActivate();
        settle();
    };
    choose("smb://server/clip.mp4");
    const auto* alert = qobject_cast<AlertScreen*>(over());
    ASSERT_TRUE(alert && alert->message().contains("on this computer"));
    press(Qt::Key_Return);
    settle();
    choose("file://" + QByteArray::fromStdString(path("")) + "%E9t%E9.mp4");
    EXPECT_TRUE(waitForScreen("Edit"));
}

TEST_F(IntakeTest, OnlyWhatMayBeAClipIsWelcomeToBeDropped) {
    std::ofstream(path("list.txt")) << "words";
    std::filesystem::rename(clip("clip.mp4", {.width = 128, .height = 72, .frames = 3}), path("clip"));
    const std::pair<QUrl, bool> cases[] = {
        {QUrl::fromLocalFile(QString::fromStdString(path("clip"))), true},
        {QUrl::fromLocalFile(QString::fromStdString(path("list.txt"))), false},
        {QUrl::fromLocalFile(QString::fromStdString(path(""))), false},
        {QUrl("smb://server/IMG_0001.MOV"), true},
        {QUrl("https://example.com/page"), false}};
    for (const auto& [address, isWelcome] : cases)
        EXPECT_EQ(ClipFiles::mayBeClip(address), isWelcome) << address.toString().toStdString();
}

TEST_F(IntakeTest, AFileIsTakenFromTheClipboardInAnyFormThatProgramsCopyItIn) {
    const QString name =
        QString::fromStdString(clip("my clip.mp4", {.width = 128, .height = 72, .frames = 30}));
    const QByteArray address = QUrl::fromLocalFile(name).toEncoded();
    const std::tuple<const char*, QByteArray, bool> cases[] = {
        {"text/uri-list", address + "\r\nfile:///other.mp4\r\n", true},
        {"x-special/gnome-copied-files", "copy\n" + address + "\nfile:///other.mp4", true},
        {"text/plain", name.toUtf8() + "\n", true},
        {"text/plain", address, true},
        {"text/plain", "/no/such/file", false},
        {"text/plain", "words", false},
        {"image/png", "picture", false},
    };
    for (const auto& [type, bytes, isFile] : cases) {
        QMimeData copied;
        copied.setData(type, bytes);
        EXPECT_EQ(fileOnClipboard(copied), isFile ? QUrl::fromLocalFile(name) : QUrl())
            << type << ' ' << bytes.toStdString();
    }

    auto* copied = new QMimeData;
    copied->setUrls({QUrl::fromLocalFile(name)});
    QGuiApplication::clipboard()->setMimeData(copied);
    QTest::keyClick(&window(), Qt::Key_V, Qt::ControlModifier);
    EXPECT_TRUE(waitForScreen("Edit"));
}

} // namespace anadrome::desktop
