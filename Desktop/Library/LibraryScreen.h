#pragma once

#include "Desktop/Library/LibraryLines.h"
#include "Desktop/Screens/ShownScreen.h"

namespace anadrome::desktop {

/// A choice from the movies in the user's Videos folder, which is looked through once, in the background.
class LibraryScreen : public anadrome::desktop::ShownScreen {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the host")
    Q_PROPERTY(anadrome::desktop::LibraryLines* lines READ lines CONSTANT)
    /// Whether the folder is being looked through.
    Q_PROPERTY(bool searching READ isSearching NOTIFY searchingChanged)
    /// Where clips are looked for, for people: "~/Videos".
    Q_PROPERTY(QString folder READ folder CONSTANT)

public:
    LibraryScreen(const std::shared_ptr<UIViewController>& controller, QString kind, QObject* parent);
    ~LibraryScreen() override { m_stop.request_stop(); }

    LibraryLines* lines() { return &m_lines; }
    bool isSearching() const { return m_isSearching; }
    static QString folder();

    /// Ends the screen with the clip of that row; without effect if there is none.
    Q_INVOKABLE void choose(int row);
    void close() override;

Q_SIGNALS:
    void searchingChanged();

private:
    void search();

    ThumbnailQueue m_thumbnails;
    LibraryLines m_lines;
    bool m_isSearching = true;
    std::stop_source m_stop;
};

} // namespace anadrome::desktop
