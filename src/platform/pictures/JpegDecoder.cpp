#include "platform/pictures/JpegDecoder.h"

#include "platform/pictures/ColourConversion.h"
#include "platform/pictures/ExifOrientation.h"
#include "runtime/Failure.h"

#include <algorithm>
#include <array>
#include <bit>
#include <csetjmp>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <utility>
#include <vector>

#include <jpeglib.h>

#include <jerror.h>

namespace trovarium {

namespace {

// Transposing writes this many pixels side by side: a cache line of them.
constexpr int StripRows = 16;
constexpr std::uint32_t Grey = 0xff808080U;
constexpr int ProfileMarker = JPEG_APP0 + 2;
constexpr unsigned LongestMarker = 0xffff;
// What comes in several scans is held as coefficients: three or six bytes for each pixel.
constexpr long MostMemory = 768L << 20;
// A file of a few kilobytes could otherwise keep a core busy for hours with empty scans.
constexpr int MostScans = 200;

struct ErrorManager {
    jpeg_error_mgr base{};
    std::jmp_buf jump{};
    bool withoutData = false;
};

struct ProgressManager {
    jpeg_progress_mgr base{};
    const std::atomic<bool>* cancelled = nullptr;
};

ErrorManager& errorManager(j_common_ptr info)
{
    return *reinterpret_cast<ErrorManager*>(info->err);
}

[[noreturn]] void leave(j_common_ptr info)
{
    std::longjmp(errorManager(info).jump, 1);
}

// Damage is stepped over by the library; only an image that ends before its first row of blocks is
// noted, since nothing of it can be shown.
void noteMessage(j_common_ptr info, int level)
{
    if (level >= 0)
        return;
    ++info->err->num_warnings;
    constexpr int EndOfImage = 0xD9;
    const auto& decompress = *reinterpret_cast<j_decompress_ptr>(info);
    if (info->err->msg_code == JWRN_HIT_MARKER && decompress.unread_marker == EndOfImage
        && decompress.input_scan_number <= 1 && decompress.input_iMCU_row == 0 && decompress.total_iMCU_rows > 1)
        errorManager(info).withoutData = true;
}

void sayNothing(j_common_ptr) { }

void watchProgress(j_common_ptr info)
{
    const auto& progress = *reinterpret_cast<const ProgressManager*>(info->progress);
    if (*progress.cancelled || reinterpret_cast<j_decompress_ptr>(info)->input_scan_number > MostScans)
        leave(info);
}

// Inks to light. What carries an Adobe marker has its inks stored inverted.
void convertInks(std::uint32_t* pixels, int count, bool inverted)
{
    const unsigned flip = inverted ? 0U : 255U;
    for (std::uint32_t* pixel = pixels; pixel != pixels + count; ++pixel) {
        const auto inks = std::bit_cast<std::array<std::uint8_t, 4>>(*pixel);
        const unsigned key = inks[3] ^ flip;
        const auto light = [&](unsigned ink) { return ((ink ^ flip) * key + 127U) / 255U; };
        *pixel = 0xff000000U | light(inks[0]) << 16U | light(inks[1]) << 8U | light(inks[2]);
    }
}

std::uint32_t halfBlack(ColourKind inks)
{
    constexpr std::array<std::uint8_t, 4> Ink = {0, 0, 0, 128};
    const auto pixel = std::bit_cast<std::uint32_t>(Ink);
    return inks == ColourKind::InvertedInks ? ~pixel : pixel;
}

bool swapsSides(int orientation)
{
    return orientation >= 5;
}

// Rows of the file, put where they stand in the upright picture.
class UprightTarget {
public:
    UprightTarget(std::uint32_t* pixels, std::ptrdiff_t pixelsPerLine, int orientation, int width, int height)
        : m_pixels(pixels)
        , m_perLine(pixelsPerLine)
        , m_orientation(orientation)
        , m_width(width)
        , m_height(height)
    {
    }

    void place(const std::uint32_t* strip, int firstRow, int rows)
    {
        if (swapsSides(m_orientation)) {
            placeColumns(strip, firstRow, rows);
            return;
        }
        const bool bottomUp = m_orientation == 3 || m_orientation == 4;
        const bool rightToLeft = m_orientation == 2 || m_orientation == 3;
        for (int i = 0; i < rows; ++i) {
            const int row = firstRow + i;
            const std::uint32_t* from = strip + std::ptrdiff_t{i} * m_width;
            std::uint32_t* to = m_pixels + (bottomUp ? m_height - 1 - row : row) * m_perLine;
            if (rightToLeft)
                std::reverse_copy(from, from + m_width, to);
            else
                std::copy(from, from + m_width, to);
        }
    }

    // Where a row can be decoded in place; null where it has to be turned.
    std::uint32_t* row(int index) { return m_orientation == 1 ? m_pixels + index * m_perLine : nullptr; }

private:
    void placeColumns(const std::uint32_t* strip, int firstRow, int rows)
    {
        const bool bottomUp = m_orientation == 7 || m_orientation == 8;
        const bool rightToLeft = m_orientation == 6 || m_orientation == 7;
        const std::ptrdiff_t step = rightToLeft ? -1 : 1;
        for (int x = 0; x < m_width; ++x) {
            std::uint32_t* to = m_pixels + (bottomUp ? m_width - 1 - x : x) * m_perLine
                + (rightToLeft ? m_height - 1 - firstRow : firstRow);
            const std::uint32_t* from = strip + x;
            for (int i = 0; i < rows; ++i, to += step, from += m_width)
                *to = *from;
        }
    }

    std::uint32_t* m_pixels;
    std::ptrdiff_t m_perLine;
    int m_orientation;
    int m_width; // of the rows in the file
    int m_height;
};

} // namespace

// Functions that hold a jump target keep nothing that needs a destructor.
struct JpegDecoder::State {
    State(std::span<const unsigned char> file, const std::atomic<bool>& cancelledFlag)
        : orientation(exifOrientation(file))
        , cancelled(cancelledFlag)
    {
        info.err = jpeg_std_error(&errors.base);
        errors.base.error_exit = leave;
        errors.base.emit_message = noteMessage;
        errors.base.output_message = sayNothing;
        progress.base.progress_monitor = watchProgress;
        progress.cancelled = &cancelled;
    }
    ~State() { jpeg_destroy_decompress(&info); }
    State(const State&) = delete;
    State& operator=(const State&) = delete;

    bool readHeader(std::span<const unsigned char> file)
    {
        if (setjmp(errors.jump) != 0)
            return false;
        jpeg_create_decompress(&info);
        info.mem->max_memory_to_use = MostMemory;
        info.progress = &progress.base;
        jpeg_save_markers(&info, ProfileMarker, LongestMarker);
        jpeg_mem_src(&info, file.data(), file.size());
        return jpeg_read_header(&info, TRUE) == JPEG_HEADER_OK;
    }

    // Sets `profile` to bytes that are the caller's to free, null where there are none.
    bool readProfile(JOCTET*& profile, unsigned& length)
    {
        if (setjmp(errors.jump) != 0)
            return false;
        return jpeg_read_icc_profile(&info, &profile, &length) != FALSE;
    }

    ColourKind colours() const
    {
        if (info.jpeg_color_space == JCS_GRAYSCALE)
            return ColourKind::Grey;
        if (info.jpeg_color_space != JCS_CMYK && info.jpeg_color_space != JCS_YCCK)
            return ColourKind::Rgb;
        return info.saw_Adobe_marker != FALSE ? ColourKind::InvertedInks : ColourKind::Inks;
    }

    bool start(int denominator)
    {
        if (setjmp(errors.jump) != 0)
            return false;
        info.scale_num = 1;
        info.scale_denom = static_cast<unsigned>(denominator);
        const bool inks = colours() == ColourKind::Inks || colours() == ColourKind::InvertedInks;
        constexpr J_COLOR_SPACE Native = std::endian::native == std::endian::little ? JCS_EXT_BGRA : JCS_EXT_ARGB;
        info.out_color_space = inks ? JCS_CMYK : Native;
        return jpeg_start_decompress(&info) != FALSE;
    }

    // Decodes up to `wanted` rows; the number that arrived, fewer when the rest is lost.
    int readRows(JSAMPROW* rows, int wanted)
    {
        rowsRead = 0;
        if (setjmp(errors.jump) != 0)
            return rowsRead;
        while (rowsRead < wanted) {
            const auto got = jpeg_read_scanlines(&info, rows + rowsRead, static_cast<JDIMENSION>(wanted - rowsRead));
            if (got == 0)
                break;
            rowsRead += static_cast<int>(got);
        }
        return rowsRead;
    }

    Failure failure() const
    {
        return Failure(
            errors.base.msg_code == JERR_OUT_OF_MEMORY ? FailureKind::OutOfMemory : FailureKind::InvalidPicture);
    }

    ErrorManager errors;
    ProgressManager progress;
    jpeg_decompress_struct info{};
    int orientation;
    const std::atomic<bool>& cancelled;
    std::unique_ptr<ColourConversion> conversion;
    int rowsRead = 0;
};

JpegDecoder::JpegDecoder(std::span<const unsigned char> file, const std::atomic<bool>& cancelled)
    : m_state(std::make_unique<State>(file, cancelled))
{
    if (!m_state->readHeader(file))
        throw m_state->failure();
    JOCTET* profile = nullptr;
    unsigned length = 0;
    const bool found = m_state->readProfile(profile, length);
    const std::unique_ptr<JOCTET, decltype(&std::free)> owned(profile, &std::free);
    m_state->conversion =
        std::make_unique<ColourConversion>(std::span(owned.get(), found ? length : 0), m_state->colours());
}

JpegDecoder::~JpegDecoder() = default;

int JpegDecoder::width(int denominator) const
{
    const auto& info = m_state->info;
    const auto size = static_cast<int>(swapsSides(m_state->orientation) ? info.image_height : info.image_width);
    return (size + denominator - 1) / denominator;
}

int JpegDecoder::height(int denominator) const
{
    const auto& info = m_state->info;
    const auto size = static_cast<int>(swapsSides(m_state->orientation) ? info.image_width : info.image_height);
    return (size + denominator - 1) / denominator;
}

bool JpegDecoder::decode(int denominator, std::uint32_t* pixels, std::ptrdiff_t pixelsPerLine)
{
    State& state = *m_state;
    if (!state.start(denominator)) {
        if (state.cancelled)
            return false;
        throw state.failure();
    }
    const auto width = static_cast<int>(state.info.output_width);
    const auto height = static_cast<int>(state.info.output_height);
    UprightTarget target(pixels, pixelsPerLine, state.orientation, width, height);
    std::vector<std::uint32_t> strip(static_cast<std::size_t>(width) * StripRows);
    const ColourKind colours = state.colours();
    const bool inks = state.info.out_color_space == JCS_CMYK;
    const bool plainInks = inks && state.conversion->empty();
    const std::uint32_t lost = inks && !plainInks ? halfBlack(colours) : Grey;

    bool whole = true;
    for (int first = 0; first < height; first += StripRows) {
        const int wanted = std::min(StripRows, height - first);
        const bool inPlace = target.row(first) != nullptr;
        std::array<JSAMPROW, StripRows> rows{};
        for (int i = 0; i < wanted; ++i) {
            auto* row = inPlace ? target.row(first + i) : strip.data() + std::ptrdiff_t{i} * width;
            rows[static_cast<std::size_t>(i)] = reinterpret_cast<JSAMPROW>(row);
        }
        const int read = whole ? state.readRows(rows.data(), wanted) : 0;
        if (state.cancelled)
            return false;
        if (state.errors.withoutData || (first == 0 && read == 0))
            throw state.failure();
        whole = read == wanted;
        for (int i = 0; i < wanted; ++i) {
            auto* row = reinterpret_cast<std::uint32_t*>(rows[static_cast<std::size_t>(i)]);
            if (i >= read)
                std::fill_n(row, width, lost);
            else if (plainInks)
                convertInks(row, width, colours == ColourKind::InvertedInks);
        }
        if (!inPlace)
            target.place(strip.data(), first, wanted);
    }
    const bool turned = swapsSides(state.orientation);
    state.conversion->convert(pixels, turned ? height : width, turned ? width : height, pixelsPerLine, state.cancelled);
    return !state.cancelled;
}

} // namespace trovarium
