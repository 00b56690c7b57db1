#include "Platform/AVFoundation/Playback/BackwardPictures.h"

#include "Platform/AVFoundation/Playback/ForwardPictures.h"

#include <algorithm>
#include <utility>

namespace anadrome::playback {

namespace {

std::size_t bytesOf(const CVPixelBufferRef& pixels) {
    return CVPixelBufferGetBytesPerRow(pixels) * CVPixelBufferGetHeight(pixels);
}

/// By how much more than the last run took the next one is expected to take.
constexpr double slack = 1.2;
constexpr std::int32_t stepScale = 90000;

double secondsBetween(const CMTime& from, const CMTime& to) {
    return CMTimeGetSeconds(CMTimeSubtract(to, from));
}

} // namespace

BackwardPictures::BackwardPictures(PictureDecoder& decoder, const CMTime& position, std::size_t mostBytes)
    : m_decoder(decoder), m_position(position), m_runBytes(mostBytes / 2),
      m_limit(CMTimeAdd(position, decoder.rounding())) {}

bool BackwardPictures::isAtEnd() const {
    return m_stage == Stage::ended && m_shown.pictures.empty();
}

bool BackwardPictures::work(const CMTime& distance) {
    if (m_stage == Stage::complete || m_stage == Stage::ended)
        return false;
    if (m_stage == Stage::idle)
        begin(distance);
    std::optional<DecodedPicture> picture = m_decoder.next();
    if (!picture || CMTimeCompare(picture->time, m_limit) >= 0)
        complete(distance);
    else
        pend(std::move(*picture));
    return true;
}

void BackwardPictures::begin(const CMTime& distance) {
    // Where play has already gone past, nothing is decoded.
    const CMTime reached = CMTimeAdd(CMTimeSubtract(m_position, distance), m_decoder.rounding());
    m_limit = CMTimeMinimum(m_limit, reached);
    m_keyTime = m_decoder.seek(CMTimeSubtract(m_limit, m_decoder.rounding()));
    const auto room =
        static_cast<double>(std::clamp<std::size_t>(m_runBytes / m_decoder.pictureBytes(), 1, 1 << 16));
    const double length = CMTIME_IS_NUMERIC(m_keyTime) ? secondsBetween(m_keyTime, m_limit) : 0;
    const double duration = CMTimeGetSeconds(m_decoder.pictureDuration());
    const double needed = slack * m_pace * length;
    const double span = std::max(duration * room, needed);
    // The picture at the limit comes on top of those at the steps.
    const double step = span / std::max(room - 1, 1.0);
    m_step = needed < span ? kCMTimeZero : CMTimeMakeWithSeconds(step, stepScale);
    m_wanted = CMTimeSubtract(m_limit, CMTimeMakeWithSeconds(span, stepScale));
    m_begunAt = distance;
    m_begunLength = length;
    m_stage = Stage::decoding;
}

void BackwardPictures::pend(DecodedPicture picture) {
    const CMTime end = picture.time;
    if (m_pending && CMTimeCompare(m_wanted, end) < 0) {
        keep(*m_pending);
        while (CMTimeCompare(m_step, kCMTimeZero) > 0 && CMTimeCompare(m_wanted, end) < 0)
            m_wanted = CMTimeAdd(m_wanted, m_step);
    }
    m_pending = std::move(picture);
}

void BackwardPictures::keep(const DecodedPicture& picture) {
    CVPixelBufferRef pixels = m_decoder.convert(picture);
    if (!pixels)
        return;
    m_next.bytes += bytesOf(pixels);
    m_next.pictures.push_back({std::move(pixels), picture.time, kCMTimeZero});
    while (m_next.bytes > m_runBytes && m_next.pictures.size() > 1)
        dropOne(m_next, true);
}

void BackwardPictures::complete(const CMTime& distance) {
    if (m_begunLength > 0)
        m_pace = secondsBetween(m_begunAt, distance) / m_begunLength;
    // The one that is seen first is never left out.
    if (m_pending)
        keep(*m_pending);
    m_pending.reset();
    if (!m_next.pictures.empty()) {
        setDues();
        m_stage = Stage::complete;
        return;
    }
    // A stretch that can't be decoded is passed over; before the first key frame there is nothing.
    const bool goesOn = CMTIME_IS_NUMERIC(m_keyTime) && CMTimeCompare(m_keyTime, m_limit) < 0;
    m_stage = goesOn ? Stage::idle : Stage::ended;
    m_limit = CMTimeMinimum(m_limit, m_keyTime);
}

void BackwardPictures::setDues() {
    CMTime end = m_limit;
    for (auto picture = m_next.pictures.rbegin(); picture != m_next.pictures.rend(); ++picture) {
        const CMTime appears = CMTimeSubtract(end, m_decoder.rounding());
        picture->due = CMTimeMaximum(CMTimeSubtract(m_position, appears), kCMTimeZero);
        end = picture->time;
    }
}

void BackwardPictures::dropOne(Run& run, bool first) {
    const TimedPicture& picture = first ? run.pictures.front() : run.pictures.back();
    run.bytes -= bytesOf(picture.pixels);
    first ? run.pictures.pop_front() : run.pictures.pop_back();
}

std::optional<TimedPicture> BackwardPictures::take(const CMTime& distance) {
    if (m_shown.pictures.empty() && m_stage == Stage::complete) {
        m_shown = std::exchange(m_next, {});
        m_limit = m_shown.pictures.front().time;
        m_stage = Stage::idle;
    }
    std::deque<TimedPicture>& pictures = m_shown.pictures;
    while (pictures.size() > 1 && CMTimeCompare(pictures[pictures.size() - 2].due, distance) <= 0)
        dropOne(m_shown, false);
    if (pictures.empty())
        return std::nullopt;
    TimedPicture picture = pictures.back();
    dropOne(m_shown, false);
    return picture;
}

std::unique_ptr<PictureSource> makePictureSource(PictureDecoder& decoder, const CMTime& position,
                                                 Direction direction, std::size_t mostBytes) {
    if (direction == Direction::backwards)
        return std::make_unique<BackwardPictures>(decoder, position, mostBytes);
    return std::make_unique<ForwardPictures>(decoder, position);
}

} // namespace anadrome::playback
