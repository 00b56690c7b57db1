#include "Desktop/Library/ThumbnailCache.h"

#include "Platform/Foundation/SmallFile.h"
#include "Platform/Foundation/UserFolders.h"

#include <QBuffer>
#include <QCryptographicHash>
#include <QMimeDatabase>
#include <cmath>
#include <sys/stat.h>
#include <unistd.h>

namespace anadrome::desktop {

namespace {

constexpr const char* uriKey = "Thumb::URI";
constexpr const char* modifiedKey = "Thumb::MTime";
constexpr const char* bytesKey = "Thumb::Size";
constexpr const char* typeKey = "Thumb::Mimetype";
constexpr const char* lengthKey = "Thumb::Movie::Length";
constexpr const char* softwareKey = "Software";

constexpr const char* ownFolder = "large";
/// Where thumbnails are large enough, the quickest to read first.
constexpr const char* folders[] = {ownFolder, "x-large", "xx-large"};
constexpr const char* failureFolder = "fail/anadrome-" ANADROME_VERSION;

QString uriOf(const ThumbnailCache::Original& original) {
    return QString::fromStdString(original.file.absoluteString());
}

/// The thumbnail in a file; null if it isn't one of this state of the original.
QImage validImage(const std::string& path, const ThumbnailCache::Original& original) {
    const QImage image(QString::fromStdString(path), "png");
    const bool isValid = image.text(uriKey) == uriOf(original) &&
                         image.text(modifiedKey) == QString::number(original.modified);
    return isValid ? image : QImage();
}

std::optional<double> secondsIn(const QImage& image) {
    bool isNumber = false;
    const double seconds = image.text(lengthKey).toDouble(&isNumber);
    return isNumber && seconds > 0 ? std::optional(seconds) : std::nullopt;
}

bool write(const std::string& path, QImage image, const ThumbnailCache::Original& original) {
    image.setText(uriKey, uriOf(original));
    image.setText(modifiedKey, QString::number(original.modified));
    image.setText(bytesKey, QString::number(original.bytes));
    image.setText(softwareKey, "Anadrome " ANADROME_VERSION);
    QBuffer file;
    return file.open(QIODevice::WriteOnly) && image.save(&file, "png") &&
           !replaceSmallFile(path, {file.data().constData(), static_cast<std::size_t>(file.size())});
}

} // namespace

ThumbnailCache::ThumbnailCache() : m_folder(userCacheFolder() + "/thumbnails") {}

std::optional<ThumbnailCache::Original> ThumbnailCache::originalOf(const URL& file) const {
    struct stat status {};
    if (file.path().starts_with(m_folder + '/') || ::stat(file.path().c_str(), &status) != 0 ||
        ::access(file.path().c_str(), R_OK) != 0)
        return std::nullopt;
    return Original{file, status.st_mtim.tv_sec, status.st_size};
}

std::optional<ThumbnailCache::Entry> ThumbnailCache::find(const Original& original) const {
    for (const char* folder : folders) {
        const std::string path = place(folder, original);
        if (const QImage image = validImage(path, original); !image.isNull())
            return Entry{QString::fromStdString(path), secondsIn(image)};
    }
    if (!validImage(place(failureFolder, original), original).isNull())
        return Entry{};
    return std::nullopt;
}

QString ThumbnailCache::keep(const Original& original, QImage picture, double seconds) const {
    const std::string path = place(ownFolder, original);
    const QString name = QString::fromStdString(original.file.path());
    picture.setText(typeKey, QMimeDatabase().mimeTypeForFile(name).name());
    picture.setText(lengthKey, QString::number(std::llround(seconds)));
    return write(path, std::move(picture), original) ? QString::fromStdString(path) : QString();
}

void ThumbnailCache::keepFailure(const Original& original) const {
    QImage nothing(1, 1, QImage::Format_RGBA8888);
    nothing.fill(Qt::transparent);
    write(place(failureFolder, original), std::move(nothing), original);
}

std::string ThumbnailCache::place(const char* folder, const Original& original) const {
    const QByteArray key =
        QCryptographicHash::hash(uriOf(original).toUtf8(), QCryptographicHash::Md5).toHex();
    return m_folder + '/' + folder + '/' + key.toStdString() + ".png";
}

} // namespace anadrome::desktop
