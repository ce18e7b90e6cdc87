#include "platform/linux/drawing/PngEncoder.h"

#include <QtEndian>

#include <cstdint>

namespace quillbar::platform {

namespace {

void appendNumber(QByteArray& bytes, std::uint32_t number)
{
    auto const bigEndian = qToBigEndian(number);
    bytes.append(reinterpret_cast<char const*>(&bigEndian), sizeof bigEndian);
}

std::uint32_t checksum(QByteArrayView bytes)
{
    constexpr std::uint32_t polynomial = 0xEDB88320;
    std::uint32_t sum = 0xFFFFFFFF;
    for (auto const byte : bytes) {
        sum ^= static_cast<std::uint8_t>(byte);
        for (int bit = 0; bit < 8; ++bit)
            sum = (sum >> 1) ^ ((sum & 1) != 0 ? polynomial : 0);
    }
    return ~sum;
}

void appendChunk(QByteArray& file, char const* type, QByteArray const& data)
{
    auto const checked = type + data;
    appendNumber(file, static_cast<std::uint32_t>(data.size()));
    file += checked;
    appendNumber(file, checksum(checked));
}

QByteArray header(QImage const& image)
{
    QByteArray data;
    appendNumber(data, static_cast<std::uint32_t>(image.width()));
    appendNumber(data, static_cast<std::uint32_t>(image.height()));
    // Eight bits for each of red, green, blue and alpha; the only compression and filters there
    // are; no interlacing.
    data.append("\x08\x06\x00\x00\x00", 5);
    return data;
}

QByteArray pixels(QImage const& image)
{
    QByteArray rows;
    auto const rowSize = qsizetype { image.width() } * 4;
    rows.reserve((rowSize + 1) * image.height());
    for (int y = 0; y < image.height(); ++y) {
        // Every row names its filter: none.
        rows.append('\0');
        rows.append(reinterpret_cast<char const*>(image.constScanLine(y)), rowSize);
    }
    // Qt puts the length before what zlib made.
    constexpr qsizetype lengthSize = 4;
    return qCompress(rows).mid(lengthSize);
}

} // namespace

QByteArray encodePng(QImage const& image)
{
    auto const rgba = image.convertToFormat(QImage::Format_RGBA8888);
    QByteArray file("\x89PNG\r\n\x1A\n");
    appendChunk(file, "IHDR", header(rgba));
    appendChunk(file, "IDAT", pixels(rgba));
    appendChunk(file, "IEND", {});
    return file;
}

} // namespace quillbar::platform
