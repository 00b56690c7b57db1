#include "Desktop/Library/LibraryScreen.h"

#include "Platform/Dispatch/DispatchQueue.h"
#include "Platform/Foundation/UserFolders.h"
#include "Platform/PhotosUI/PHPickerViewController.h"

#include <QDir>

namespace anadrome::desktop {

LibraryScreen::LibraryScreen(const std::shared_ptr<UIViewController>& controller, QString kind,
                             QObject* parent)
    : ShownScreen(controller, std::move(kind), parent) {
    search();
}

void LibraryScreen::search() {
    const URL folder = URL::fileURLWithPath(userVideosFolder());
    DispatchQueue::global(QualityOfService::userInitiated).async([this, folder, stop = m_stop.get_token()] {
        auto movies = findMovies(folder, stop);
        // Both this and the screen's end are on the main thread.
        DispatchQueue::main().async([this, stop, movies = std::move(movies)] {
            if (stop.stop_requested())
                return;
            m_lines.setMovies(movies, m_thumbnails);
            m_isSearching = false;
            Q_EMIT searchingChanged();
        });
    });
}

QString LibraryScreen::folder() {
    const QString folder = QString::fromStdString(userVideosFolder());
    const QString home = QDir::homePath();
    return folder.startsWith(home + '/') ? '~' + folder.sliced(home.size()) : folder;
}

void LibraryScreen::choose(int row) {
    const auto picker = controllerAs<PHPickerViewController>();
    if (picker && row >= 0 && row < static_cast<int>(m_lines.clips().size()))
        picker->finish({m_lines.clips()[static_cast<std::size_t>(row)]->file()});
}

void LibraryScreen::close() {
    if (const auto picker = controllerAs<PHPickerViewController>())
        picker->finish({});
}

} // namespace anadrome::desktop
