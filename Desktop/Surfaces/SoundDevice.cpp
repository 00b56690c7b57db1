#include "Desktop/Surfaces/SoundDevice.h"

#include "Desktop/Surfaces/SoundSamples.h"

#include <QAudioDevice>
#include <QAudioSink>
#include <QMediaDevices>
#include <QPointer>

#include <algorithm>
#include <optional>

namespace anadrome {

namespace {

/// A sound server takes up to half of it away at a time, and what is heard may go in such steps at first.
constexpr int bufferedMilliseconds = 240;

/// Objects of the sound library run the event loop when they go. That must not happen below somebody who
/// only lets go of a stretch of sound, so it is left to the event loop.
struct DeleteLater {
    void operator()(QAudioSink* sink) const { sink->deleteLater(); }
};
using AudioSink = std::unique_ptr<QAudioSink, DeleteLater>;

/// Stereo at the device's own rate, in floats if it takes them.
std::optional<QAudioFormat> formatFor(const QAudioDevice& device) {
    QAudioFormat format = device.preferredFormat();
    format.setChannelConfig(QAudioFormat::ChannelConfigStereo);
    for (const QAudioFormat::SampleFormat samples : {QAudioFormat::Float, QAudioFormat::Int16}) {
        format.setSampleFormat(samples);
        if (device.isFormatSupported(format))
            return format;
    }
    return std::nullopt;
}

class SoundDevice : public SoundSink {
public:
    /// The sink has been started; bytes are written to the port, which the sink owns.
    SoundDevice(AudioSink sink, QIODevice* port)
        : m_sink(std::move(sink)), m_port(port), m_format(m_sink->format()) {}
    /// Drops what the device holds.
    ~SoundDevice() override { m_sink->reset(); }
    SoundDevice(const SoundDevice&) = delete;
    SoundDevice& operator=(const SoundDevice&) = delete;

    int sampleRate() const override { return m_format.sampleRate(); }
    std::size_t write(std::span<const float> samples) override;
    std::int64_t heardFrames() const override;

private:
    std::int64_t queuedFrames() const;

    const AudioSink m_sink;
    /// Gone when the sound server is.
    const QPointer<QIODevice> m_port;
    const QAudioFormat m_format;
    std::int64_t m_written = 0;
    mutable std::int64_t m_heard = 0;
};

std::size_t SoundDevice::write(std::span<const float> samples) {
    if (!m_port)
        return 0;
    // The port takes whatever it is given, beyond the buffer's size.
    const auto room = static_cast<std::size_t>(
        m_format.framesForBytes(static_cast<qint32>(std::max<qsizetype>(m_sink->bytesFree(), 0))));
    const std::span<const float> taken = samples.first(2 * std::min(room, samples.size() / 2));
    if (taken.empty())
        return 0;
    const bool isFloat = m_format.sampleFormat() == QAudioFormat::Float;
    const std::vector<std::byte> words = isFloat ? std::vector<std::byte>() : sixteenBitBytes(taken);
    const std::span<const std::byte> bytes = isFloat ? std::as_bytes(taken) : std::span(words);
    const qint64 count =
        m_port->write(reinterpret_cast<const char*>(bytes.data()), static_cast<qint64>(bytes.size()));
    const qint64 frames = std::max<qint64>(count, 0) / m_format.bytesPerFrame();
    m_written += frames;
    return static_cast<std::size_t>(frames);
}

std::int64_t SoundDevice::queuedFrames() const {
    const qsizetype queued = std::max<qsizetype>(m_sink->bufferSize() - m_sink->bytesFree(), 0);
    return m_format.framesForBytes(static_cast<qint32>(queued));
}

/// What the device calls processed may be what it has taken or what it has played, so that what waits in
/// the buffer is taken off where it isn't yet.
std::int64_t SoundDevice::heardFrames() const {
    if (!m_port)
        return m_heard;
    const std::int64_t processed = m_sink->processedUSecs() * m_format.sampleRate() / 1'000'000;
    m_heard = std::max(m_heard, std::min(processed, m_written - queuedFrames()));
    return m_heard;
}

} // namespace

std::unique_ptr<SoundSink> openSoundDevice() {
    const QAudioDevice device = QMediaDevices::defaultAudioOutput();
    const std::optional<QAudioFormat> format = device.isNull() ? std::nullopt : formatFor(device);
    if (!format)
        return nullptr;
    AudioSink sink(new QAudioSink(device, *format));
    sink->setBufferSize(format->bytesForDuration(bufferedMilliseconds * 1000));
    QIODevice* port = sink->start();
    if (!port || sink->error() != QAudio::NoError)
        return nullptr;
    return std::make_unique<SoundDevice>(std::move(sink), port);
}

} // namespace anadrome
