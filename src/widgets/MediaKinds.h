#pragma once
// The kinds that bring media to a page: wav (plays a sound of WavBin/),
// video (plays a file of Video/; one per page), camera (shows a camera
// input) and qrcode (shows a QR code of a text held in variable memory).
// All four are display records.

#include "widgets/FieldSchema.h"

#include <QByteArray>

namespace vantile {

namespace MediaKinds {

extern const KindDef wav;
extern const KindDef video;
extern const KindDef camera;
extern const KindDef qrcode;

// The text a new qrcode shows.
extern const char *const kDefaultContent;
// The key of the qrcode's side, in steps of 50 pixels.
extern const char *const kSizeKey; // "size(50pixels)"
constexpr int kSizeStep = 50;

// What a qrcode puts into variable memory at its write address: the UTF-8
// bytes of its content, cut at a character's start so that they fit
// `byteLength`, then zeros up to `byteLength`.
QByteArray qrContentBytes(const EditBuffer &widget);

} // namespace MediaKinds

} // namespace vantile
