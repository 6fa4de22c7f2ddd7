// What a PNG file says besides its pixels, read and written.

#include <zlib.h>

#include <algorithm>
#include <cmath>
#include <string>

#include "hosts/picture_files/exif_block.h"
#include "hosts/png_files/png_chunks.h"
#include "hosts/png_files/png_read.h"
#include "hosts/png_files/png_write.h"

constexpr size_t kLargestText = size_t{16} << 20;  // profiles too
constexpr char kXmpKey[] = "XML:com.adobe.xmp";
constexpr char kRawProfile[] = "Raw profile type ";
constexpr size_t kLongestKey = 79;

// --- Texts ----------------------------------------------------------------------------------

static std::string textOf(BytesView bytes) {
  return {reinterpret_cast<const char*>(bytes.data), bytes.size};
}

static std::string utf8FromLatin1(BytesView bytes) {
  std::string text;
  for (size_t i = 0; i < bytes.size; ++i) {
    const uint8_t letter = bytes.data[i];
    if (letter >= 0x80) text.push_back(static_cast<char>(0xC0 | letter >> 6));
    text.push_back(static_cast<char>(letter < 0x80 ? letter : 0x80 | (letter & 0x3F)));
  }
  return text;
}

// Empty when a letter is none of that set.
static bool latin1FromUtf8(const std::string& text, std::string* latin1) {
  for (size_t i = 0; i < text.size(); ++i) {
    const auto first = static_cast<uint8_t>(text[i]);
    if (first < 0x80) {
      latin1->push_back(text[i]);
    } else if ((first == 0xC2 || first == 0xC3) && i + 1 < text.size()) {
      latin1->push_back(static_cast<char>((first & 3) << 6 | (text[++i] & 0x3F)));
    } else {
      return false;
    }
  }
  return true;
}

// Up to the zero byte, which is taken away too.
static BytesView takeField(BytesView* bytes) {
  size_t length = 0;
  while (length < bytes->size && bytes->data[length] != 0) ++length;
  const BytesView field = bytes->part(0, length);
  *bytes = bytes->part(length + 1);
  return field;
}

// What some programs write for blocks that have no chunk: "\nNAME\n  LENGTH\nHEXADECIMAL".
static FileBytes rawProfile(const std::string& text) {
  size_t at = text.find('\n', 1);
  if (at == std::string::npos) return {};
  at = text.find('\n', at + 1);
  FileBytes bytes;
  int digits = 0;
  for (int value = 0; at < text.size(); ++at) {
    const char c = text[at];
    const int digit = c >= '0' && c <= '9' ? c - '0' : c >= 'a' && c <= 'f' ? c - 'a' + 10 : -1;
    if (digit < 0) continue;
    value = value << 4 | digit;
    if (++digits % 2 == 0) bytes.push_back(static_cast<uint8_t>(value & 255));
  }
  return bytes;
}

static void noteText(PictureText text, PictureMetadata* metadata) {
  if (text.key == kXmpKey) {
    metadata->xmp.assign(text.text.begin(), text.text.end());
  } else if (text.key == std::string(kRawProfile) + "iptc") {
    metadata->iptc = iptcRecords(rawProfile(text.text));
  } else if (text.key == std::string(kRawProfile) + "exif" ||
             text.key == std::string(kRawProfile) + "APP1") {
    if (metadata->exif.empty()) metadata->exif = exifWithoutName(rawProfile(text.text));
  } else {
    metadata->texts.push_back(std::move(text));
  }
}

static void readText(const PngChunk& chunk, PictureMetadata* metadata) {
  BytesView rest = chunk.data;
  PictureText text;
  text.key = utf8FromLatin1(takeField(&rest));
  if (chunk.name == "tEXt") {
    text.text = utf8FromLatin1(rest);
  } else if (chunk.name == "zTXt") {
    text.text = utf8FromLatin1(unpackPngText(rest.part(1), kLargestText));
  } else {
    const bool packed = rest.size > 0 && rest.data[0] == 1;
    rest = rest.part(2);
    text.language = textOf(takeField(&rest));
    text.translatedKey = textOf(takeField(&rest));
    text.text = packed ? textOf(unpackPngText(rest, kLargestText)) : textOf(rest);
  }
  noteText(std::move(text), metadata);
}

// --- Reading --------------------------------------------------------------------------------

static void readChunk(const PngChunk& chunk, PictureMetadata* metadata) {
  const std::string& name = chunk.name;
  if (name == "iCCP") {
    BytesView rest = chunk.data;
    takeField(&rest);
    metadata->profile = unpackPngText(rest.part(1), kLargestText);
    metadata->profileTooLarge = metadata->profile.empty();
  } else if (name == "pHYs" && chunk.data.size == 9 && chunk.data.data[8] == 1) {
    metadata->dotsPerMeterX = bigEndianAt(chunk.data, 0, 4);
    metadata->dotsPerMeterY = bigEndianAt(chunk.data, 4, 4);
  } else if (name == "eXIf") {
    metadata->exif = chunk.data.copy();
  } else if (name == "tEXt" || name == "zTXt" || name == "iTXt") {
    readText(chunk, metadata);
  } else if (name == "gAMA" || name == "cHRM" || name == "sRGB" || name == "cICP") {
    metadata->pngColors.push_back({name, chunk.data.copy()});
  }
}

void readPngMetadata(BytesView file, PictureMetadata* metadata) {
  size_t at = kPngSignatureBytes;
  size_t room = 4 * kLargestText;  // of all of them together
  for (;;) {
    const PngChunk chunk = nextPngChunk(file, &at);
    if (chunk.name.empty() || chunk.name == "IEND") return;
    const bool known = chunk.name != "IDAT" && (chunk.name[0] & 0x20) != 0;
    if (!known || chunk.data.size > room || !isWholePngChunk(chunk)) continue;
    room -= chunk.data.size;
    readChunk(chunk, metadata);
  }
}

// --- Writing --------------------------------------------------------------------------------

static void append(FileBytes* bytes, const std::string& text) {
  bytes->insert(bytes->end(), text.begin(), text.end());
}

static FileBytes packed(BytesView bytes) {
  uLongf length = compressBound(static_cast<uLong>(bytes.size));
  FileBytes stream(length);
  compress(stream.data(), &length, bytes.data, static_cast<uLong>(bytes.size));
  stream.resize(length);
  return stream;
}

static PngPart textPart(const PictureText& text) {
  std::string key;
  if (!latin1FromUtf8(text.key.substr(0, kLongestKey), &key) || key.empty()) key = "Comment";
  std::string latin1;
  const bool plain = text.language.empty() && text.translatedKey.empty();
  FileBytes data;
  append(&data, key + '\0');
  if (plain && latin1FromUtf8(text.text, &latin1)) {
    append(&data, latin1);
    return {"tEXt", data};
  }
  append(&data,
         std::string(2, '\0') + text.language + '\0' + text.translatedKey + '\0' + text.text);
  return {"iTXt", data};
}

static PngPart iptcPart(const FileBytes& iptc) {
  const FileBytes block = photoshopBlock(iptc);
  std::string text = "\niptc\n" + std::to_string(block.size()) + "\n";
  constexpr char kDigits[] = "0123456789abcdef";
  for (const uint8_t byte : block) text += {kDigits[byte >> 4], kDigits[byte & 15]};
  FileBytes data;
  append(&data, std::string(kRawProfile) + "iptc" + std::string(2, '\0'));
  const FileBytes stream = packed({reinterpret_cast<const uint8_t*>(text.data()), text.size()});
  data.insert(data.end(), stream.begin(), stream.end());
  return {"zTXt", data};
}

static void appendNumber(double number, FileBytes* bytes) {
  const auto whole = static_cast<uint32_t>(std::clamp(std::round(number), 0.0, 4294967295.0));
  for (int shift = 24; shift >= 0; shift -= 8)
    bytes->push_back(static_cast<uint8_t>(whole >> shift));
}

std::vector<PngPart> pngParts(const PictureMetadata& metadata) {
  std::vector<PngPart> parts;
  if (!metadata.profile.empty()) {
    FileBytes data;
    append(&data, std::string("ICC Profile") + std::string(2, '\0'));
    const FileBytes stream = packed(metadata.profile);
    data.insert(data.end(), stream.begin(), stream.end());
    parts.push_back({"iCCP", data});
  }
  // Besides a profile the others are for readers that know none, and say less.
  for (const PngPart& part : metadata.pngColors) {
    if (metadata.profile.empty() || part.name == "cICP") parts.push_back(part);
  }
  if (metadata.dotsPerMeterX > 0 && metadata.dotsPerMeterY > 0) {
    FileBytes data;
    appendNumber(metadata.dotsPerMeterX, &data);
    appendNumber(metadata.dotsPerMeterY, &data);
    data.push_back(1);
    parts.push_back({"pHYs", data});
  }
  if (!metadata.exif.empty()) parts.push_back({"eXIf", metadata.exif});
  if (!metadata.xmp.empty()) {
    FileBytes data;
    append(&data, kXmpKey + std::string(5, '\0'));
    data.insert(data.end(), metadata.xmp.begin(), metadata.xmp.end());
    parts.push_back({"iTXt", data});
  }
  if (!metadata.iptc.empty()) parts.push_back(iptcPart(metadata.iptc));
  for (const PictureText& text : metadata.texts) parts.push_back(textPart(text));
  return parts;
}
