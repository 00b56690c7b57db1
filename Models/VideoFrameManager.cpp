#include "Models/VideoFrameManager.h"

#include "Models/PixelBufferMetadata.h"
#include "Models/WorkFolder.h"
#include "Platform/Foundation/FileData.h"
#include "Platform/Foundation/NSFileManager.h"
#include "Platform/Foundation/Print.h"

#include <mutex>
#include <span>

namespace anadrome {

namespace {

std::mutex saveErrorMutex;
std::optional<NSError> firstSaveError;

void noteSaveError(const std::optional<NSError>& error) {
    if (!error)
        return;
    debugLog(error->description());
    const std::lock_guard lock(saveErrorMutex);
    if (!firstSaveError)
        firstSaveError = error;
}

URL metadataUrl(const URL& folder, std::int64_t index) {
    return folder.appendingPathComponent("frame_" + std::to_string(index) + "_metadata.json");
}

URL dataUrl(const URL& folder, std::int64_t index) {
    return folder.appendingPathComponent("frame_" + std::to_string(index) + ".data");
}

std::optional<std::string> stringAttachment(const Dictionary& attachments, const char* key) {
    const std::string* text = findString(attachments, key);
    return text ? std::optional(*text) : std::nullopt;
}

PixelBufferMetadata metadataOf(const CVPixelBufferRef& buffer) {
    PixelBufferMetadata metadata;
    metadata.width = static_cast<std::int64_t>(CVPixelBufferGetWidth(buffer));
    metadata.height = static_cast<std::int64_t>(CVPixelBufferGetHeight(buffer));
    metadata.pixelFormat = CVPixelBufferGetPixelFormatType(buffer);
    metadata.bytesPerRow = static_cast<std::int64_t>(CVPixelBufferGetBytesPerRow(buffer));
    const std::size_t planeCount = CVPixelBufferGetPlaneCount(buffer);
    metadata.planeCount = static_cast<std::int64_t>(planeCount);

    const Dictionary attachments = CVBufferCopyAttachments(buffer, kCVAttachmentMode_ShouldPropagate);
    for (std::size_t plane = 0; plane < planeCount; ++plane)
        metadata.planeInfos.push_back(
            {static_cast<std::int64_t>(CVPixelBufferGetBytesPerRowOfPlane(buffer, plane)),
             static_cast<std::int64_t>(CVPixelBufferGetHeightOfPlane(buffer, plane))});
    metadata.colorSpace = stringAttachment(attachments, kCVImageBufferColorPrimariesKey);
    metadata.yCbCrMatrix = stringAttachment(attachments, kCVImageBufferYCbCrMatrixKey);
    metadata.colorPrimaries = stringAttachment(attachments, kCVImageBufferColorPrimariesKey);
    metadata.transferFunction = stringAttachment(attachments, kCVImageBufferTransferFunctionKey);
    metadata.chromaLocationTopField = stringAttachment(attachments, kCVImageBufferChromaLocationTopFieldKey);
    metadata.chromaLocationBottomField =
        stringAttachment(attachments, kCVImageBufferChromaLocationBottomFieldKey);
    return metadata;
}

void putIfPresent(Dictionary& dictionary, const char* key, const std::optional<std::string>& value) {
    if (value)
        dictionary.emplace(key, *value);
}

Dictionary creationAttributes(const PixelBufferMetadata& metadata) {
    Dictionary attributes{{kCVPixelBufferCGImageCompatibilityKey, true},
                          {kCVPixelBufferCGBitmapContextCompatibilityKey, true},
                          {kCVPixelBufferIOSurfacePropertiesKey, Dictionary{}},
                          {kCVPixelBufferPixelFormatTypeKey, metadata.pixelFormat}};
    putIfPresent(attributes, kCVImageBufferColorPrimariesKey, metadata.colorPrimaries);
    putIfPresent(attributes, kCVImageBufferTransferFunctionKey, metadata.transferFunction);
    putIfPresent(attributes, kCVImageBufferYCbCrMatrixKey, metadata.yCbCrMatrix);
    return attributes;
}

Dictionary attachmentsOf(const PixelBufferMetadata& metadata) {
    Dictionary attachments;
    putIfPresent(attachments, kCVImageBufferColorPrimariesKey, metadata.colorPrimaries);
    putIfPresent(attachments, kCVImageBufferTransferFunctionKey, metadata.transferFunction);
    putIfPresent(attachments, kCVImageBufferYCbCrMatrixKey, metadata.yCbCrMatrix);
    putIfPresent(attachments, kCVImageBufferChromaLocationTopFieldKey, metadata.chromaLocationTopField);
    putIfPresent(attachments, kCVImageBufferChromaLocationBottomFieldKey, metadata.chromaLocationBottomField);
    return attachments;
}

std::size_t planeSize(std::int64_t bytesPerRow, std::int64_t height) {
    std::int64_t size = 0;
    if (bytesPerRow < 0 || height < 0 || __builtin_mul_overflow(bytesPerRow, height, &size))
        fatalError("VideoFrameManager: the size of a plane overflows");
    return static_cast<std::size_t>(size);
}

std::span<std::byte> bytesAt(void* address, std::size_t size) {
    if (!address)
        fatalError("VideoFrameManager: a locked buffer has no address");
    return {static_cast<std::byte*>(address), size};
}

/// The bytes of each plane as the metadata has them; one piece for a buffer that isn't planar. The buffer
/// must be locked.
std::vector<std::span<std::byte>> piecesOf(const CVPixelBufferRef& buffer,
                                           const PixelBufferMetadata& metadata) {
    if (metadata.planeCount == 0)
        return {
            bytesAt(CVPixelBufferGetBaseAddress(buffer), planeSize(metadata.bytesPerRow, metadata.height))};
    std::vector<std::span<std::byte>> pieces;
    for (std::size_t plane = 0; plane < metadata.planeInfos.size(); ++plane) {
        const auto& [bytesPerRow, height] = metadata.planeInfos[plane];
        pieces.push_back(
            bytesAt(CVPixelBufferGetBaseAddressOfPlane(buffer, plane), planeSize(bytesPerRow, height)));
    }
    return pieces;
}

/// Rows of the new buffer are relied on to be as long as those of the saved one.
bool fits(const CVPixelBufferRef& buffer, const PixelBufferMetadata& metadata) {
    const PixelBufferMetadata own = metadataOf(buffer);
    return own.bytesPerRow == metadata.bytesPerRow && own.planeCount == metadata.planeCount &&
           own.planeInfos == metadata.planeInfos;
}

std::size_t totalSize(const std::vector<std::span<std::byte>>& pieces) {
    std::size_t size = 0;
    for (const auto& piece : pieces)
        size += piece.size();
    return size;
}

CVPixelBufferRef makeBuffer(const PixelBufferMetadata& metadata) {
    if (metadata.width <= 0 || metadata.height <= 0)
        return nullptr;
    CVPixelBufferRef buffer;
    if (CVPixelBufferCreate(static_cast<std::size_t>(metadata.width),
                            static_cast<std::size_t>(metadata.height), metadata.pixelFormat,
                            creationAttributes(metadata), &buffer) != kCVReturnSuccess)
        return nullptr;
    if (!fits(buffer, metadata))
        fatalError("VideoFrameManager: a frame's rows aren't those of a new buffer");
    const Dictionary attachments = attachmentsOf(metadata);
    if (!attachments.empty())
        CVBufferSetAttachments(buffer, attachments, kCVAttachmentMode_ShouldPropagate);
    return buffer;
}

} // namespace

URL VideoFrameManager::framesDirectory() {
    return workFolder("Frames");
}

void VideoFrameManager::saveFrame(const CVPixelBufferRef& pixelBuffer, std::int64_t index) {
    if (index == 0) {
        const std::lock_guard lock(saveErrorMutex);
        firstSaveError.reset();
    }
    const URL folder = framesDirectory();
    CVPixelBufferLockBaseAddress(pixelBuffer, kCVPixelBufferLock_ReadOnly);
    const PixelBufferMetadata metadata = metadataOf(pixelBuffer);
    const std::string json = metadata.encoded();
    noteSaveError(writeData(metadataUrl(folder, index), std::as_bytes(std::span(json))));
    const std::vector<std::span<std::byte>> planes = piecesOf(pixelBuffer, metadata);
    const std::vector<std::span<const std::byte>> pieces(planes.begin(), planes.end());
    noteSaveError(writeData(dataUrl(folder, index), pieces));
    CVPixelBufferUnlockBaseAddress(pixelBuffer, kCVPixelBufferLock_ReadOnly);
}

std::optional<NSError> VideoFrameManager::saveError() {
    const std::lock_guard lock(saveErrorMutex);
    return firstSaveError;
}

CVPixelBufferRef VideoFrameManager::loadFrame(std::int64_t index) {
    const URL folder = framesDirectory();
    const Result<NSData> json = readData(metadataUrl(folder, index));
    if (!json)
        return nullptr;
    const auto metadata =
        PixelBufferMetadata::decoded({reinterpret_cast<const char*>((*json).data()), (*json).size()});
    if (!metadata)
        return nullptr;
    Result<FileReader> data = FileReader::open(dataUrl(folder, index));
    if (!data)
        return nullptr;
    CVPixelBufferRef buffer = makeBuffer(*metadata);
    if (!buffer)
        return nullptr;

    CVPixelBufferLockBaseAddress(buffer, 0);
    const std::vector<std::span<std::byte>> pieces = piecesOf(buffer, *metadata);
    if (data->size() < totalSize(pieces))
        fatalError("VideoFrameManager: a frame's data is shorter than its metadata says");
    const bool whole = data->read(pieces);
    CVPixelBufferUnlockBaseAddress(buffer, 0);
    return whole ? buffer : nullptr;
}

void VideoFrameManager::removeAllFrames() {
    const NSFileManager& files = NSFileManager::defaultManager();
    const URL folder = framesDirectory();
    const Result<std::vector<std::string>> names = files.contentsOfDirectoryAtPath(folder.path());
    if (!names) {
        debugLog(names.error().description());
        return;
    }
    for (const std::string& name : *names)
        if (const auto error = files.removeItemAtPath(folder.path() + "/" + name)) {
            debugLog(error->description());
            return;
        }
}

} // namespace anadrome
