#include "Platform/AVFoundation/AVAssetReader.h"

#include "Platform/Foundation/Print.h"

#include <algorithm>

namespace anadrome {

Result<std::shared_ptr<AVAssetReader>> AVAssetReader::make(std::shared_ptr<AVAsset> asset) {
    if (std::optional<NSError> error = asset->loadError())
        return *error;
    return std::shared_ptr<AVAssetReader>(new AVAssetReader(std::move(asset)));
}

AVAssetReader::~AVAssetReader() {
    cancelReading();
}

void AVAssetReader::addOutput(std::shared_ptr<AVAssetReaderTrackOutput> output) {
    if (m_started)
        fatalError("AVAssetReader: an output was added after reading had started");
    m_outputs.push_back(std::move(output));
}

bool AVAssetReader::startReading() {
    if (m_started)
        fatalError("AVAssetReader: reading was started twice");
    m_started = true;
    for (const auto& output : m_outputs)
        if (!m_startError)
            m_startError = output->start();
    return !m_startError;
}

AVAssetReaderStatus AVAssetReader::status() const {
    if (!m_started)
        return AVAssetReaderStatus::unknown;
    if (error())
        return AVAssetReaderStatus::failed;
    if (m_cancelled)
        return AVAssetReaderStatus::cancelled;
    const bool allEnded =
        std::ranges::all_of(m_outputs, [](const auto& output) { return output->hasEnded(); });
    return allEnded ? AVAssetReaderStatus::completed : AVAssetReaderStatus::reading;
}

std::optional<NSError> AVAssetReader::error() const {
    if (m_startError)
        return m_startError;
    for (const auto& output : m_outputs)
        if (std::optional<NSError> error = output->error())
            return error;
    return std::nullopt;
}

void AVAssetReader::cancelReading() {
    if (status() != AVAssetReaderStatus::reading)
        return;
    m_cancelled = true;
    for (const auto& output : m_outputs)
        output->cancel();
}

} // namespace anadrome
