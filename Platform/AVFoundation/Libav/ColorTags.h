#pragma once

#include "Platform/Foundation/NSDictionary.h"

extern "C" {
#include <libavutil/pixfmt.h>
}

namespace anadrome::libav {

/// What the numbers of a picture mean as colour, in the code points of ITU-T H.273. Unspecified where not
/// told.
struct ColorTags {
    AVColorPrimaries primaries = AVCOL_PRI_UNSPECIFIED;
    AVColorTransferCharacteristic transfer = AVCOL_TRC_UNSPECIFIED;
    AVColorSpace matrix = AVCOL_SPC_UNSPECIFIED;

    friend bool operator==(const ColorTags&, const ColorTags&) = default;
};

/// This picture's tags with the gaps filled by those of `other`.
ColorTags filled(ColorTags tags, const ColorTags& other);

/// What untagged video is taken for: BT.601 below 720 lines, BT.709 from there on.
ColorTags assumedTags(int height);

/// Tags as attachments under the kCVImageBuffer… keys. Code points without a name of theirs are left out.
Dictionary attachmentsFor(const ColorTags& tags);
ColorTags tagsFromAttachments(const Dictionary& attachments);

/// Tags from and as an AVVideoColorPropertiesKey dictionary.
ColorTags tagsFromColorProperties(const Dictionary& properties);

Dictionary colorPropertiesFor(const ColorTags& tags);

/// Whether the picture's brightness goes beyond that of ordinary video.
bool isHdr(const ColorTags& tags);

} // namespace anadrome::libav
