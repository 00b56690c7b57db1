#pragma once

#include "Platform/CoreMedia/CMFormatDescription.h"

/// Keys and values of the sound settings of reader outputs and writer inputs.
namespace anadrome {

/// Required: the coding, a four-character code.
inline constexpr const char* AVFormatIDKey = "AVFormatIDKey";
inline constexpr std::uint32_t kAudioFormatLinearPCM = fourCC("lpcm");
inline constexpr std::uint32_t kAudioFormatMPEG4AAC = fourCC("aac ");

/// Linear PCM, for reader outputs: only 16-bit little-endian integers, which are also the defaults.
inline constexpr const char* AVLinearPCMBitDepthKey = "AVLinearPCMBitDepthKey";
inline constexpr const char* AVLinearPCMIsBigEndianKey = "AVLinearPCMIsBigEndianKey";
inline constexpr const char* AVLinearPCMIsFloatKey = "AVLinearPCMIsFloatKey";

/// AAC, for writer inputs. Rate and channels are required; the layout is accepted and follows from the
/// channels.
inline constexpr const char* AVSampleRateKey = "AVSampleRateKey";
inline constexpr const char* AVNumberOfChannelsKey = "AVNumberOfChannelsKey";
inline constexpr const char* AVEncoderBitRateKey = "AVEncoderBitRateKey";
inline constexpr const char* AVChannelLayoutKey = "AVChannelLayoutKey";

} // namespace anadrome
