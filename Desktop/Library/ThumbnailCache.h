#pragma once

#include "Platform/Foundation/URL.h"

#include <QImage>
#include <optional>

namespace anadrome::desktop {

/// The thumbnails that all programs of the user share, by the desktops' common standard: one file for each
/// original and size, which says of what state of the original it is. Any thread; one at a time for an
/// original.
class ThumbnailCache {
public:
    /// In pixels, the longer side of the thumbnails that are made here.
    static constexpr int size = 256;

    /// $XDG_CACHE_HOME/thumbnails.
    ThumbnailCache();

    /// A file in the state in which it is at the moment.
    struct Original {
        URL file;
        std::int64_t modified = 0;
        std::int64_t bytes = 0;
    };
    /// Nothing for a file that can't be read, and for thumbnails, of which none are made.
    std::optional<Original> originalOf(const URL& file) const;

    struct Entry {
        /// Empty if this program failed to make one.
        QString picture;
        /// How long the movie lasts; programs needn't say it.
        std::optional<double> seconds;
    };
    /// A thumbnail of the size or larger, or the remark that there can't be one. Nothing if none is known of
    /// this state of the original.
    std::optional<Entry> find(const Original& original) const;

    /// Keeps a picture of at most the size. The file that it lies in; empty if it can't be written.
    QString keep(const Original& original, QImage picture, double seconds) const;
    /// Remarks that this version of the program can't make one.
    void keepFailure(const Original& original) const;

private:
    std::string place(const char* folder, const Original& original) const;

    const std::string m_folder;
};

} // namespace anadrome::desktop
