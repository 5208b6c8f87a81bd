// SPDX-License-Identifier: GPL-3.0-or-later

// Decodes a JPEG file in full, to sRGB where it carries a profile, several times, and tells the milliseconds of each.
//
//   floor_decode COUNT FILE
//   floor_decode profile FILE    writes the profile of Display P3

#include <chrono>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include <jpeglib.h>
#include <lcms2.h>

namespace {

// The pixels are four bytes wide, as a window takes them.
void decode(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    const std::vector<char> bytes(std::istreambuf_iterator<char>(file), {});
    jpeg_decompress_struct jpeg = {};
    jpeg_error_mgr errors = {};
    jpeg.err = jpeg_std_error(&errors);
    jpeg_create_decompress(&jpeg);
    jpeg_mem_src(&jpeg, reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size());
    jpeg_save_markers(&jpeg, JPEG_APP0 + 2, 0xffff);
    jpeg_read_header(&jpeg, TRUE);
    JOCTET* profile = nullptr;
    unsigned profileLength = 0;
    jpeg_read_icc_profile(&jpeg, &profile, &profileLength);
    jpeg.out_color_space = JCS_EXT_BGRX;
    jpeg_start_decompress(&jpeg);
    const std::size_t rowBytes = std::size_t{jpeg.output_width} * 4;
    const auto pixels = std::make_unique_for_overwrite<unsigned char[]>(rowBytes * jpeg.output_height);
    while (jpeg.output_scanline < jpeg.output_height) {
        unsigned char* row = pixels.get() + rowBytes * jpeg.output_scanline;
        jpeg_read_scanlines(&jpeg, &row, 1);
    }
    if (profile != nullptr) {
        const cmsHPROFILE source = cmsOpenProfileFromMem(profile, profileLength);
        const cmsHPROFILE standard = cmsCreate_sRGBProfile();
        const cmsHTRANSFORM transform =
            cmsCreateTransform(source, TYPE_BGRA_8, standard, TYPE_BGRA_8, INTENT_PERCEPTUAL, 0);
        cmsDoTransform(transform, pixels.get(), pixels.get(), jpeg.output_width * jpeg.output_height);
        cmsDeleteTransform(transform);
        cmsCloseProfile(standard);
        cmsCloseProfile(source);
        std::free(profile);
    }
    jpeg_finish_decompress(&jpeg);
    jpeg_destroy_decompress(&jpeg);
}

// Source: SMPTE EG 432-1 with the curve of sRGB.
bool writeProfile(const char* path)
{
    const cmsCIExyY white = {0.3127, 0.3290, 1};
    const cmsCIExyYTRIPLE primaries = {{0.680, 0.320, 1}, {0.265, 0.690, 1}, {0.150, 0.060, 1}};
    const cmsFloat64Number parameters[] = {2.4, 1 / 1.055, 0.055 / 1.055, 1 / 12.92, 0.04045};
    cmsToneCurve* curve = cmsBuildParametricToneCurve(nullptr, 4, parameters);
    cmsToneCurve* const curves[] = {curve, curve, curve};
    const cmsHPROFILE profile = cmsCreateRGBProfile(&white, &primaries, curves);
    const bool written = cmsSaveProfileToFile(profile, path) != FALSE;
    cmsCloseProfile(profile);
    cmsFreeToneCurve(curve);
    return written;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 3) {
        std::cerr << "usage: floor_decode COUNT|profile FILE\n";
        return 2;
    }
    if (std::string(argv[1]) == "profile")
        return writeProfile(argv[2]) ? 0 : 1;
    for (int i = std::atoi(argv[1]); i > 0; --i) {
        const auto start = std::chrono::steady_clock::now();
        decode(argv[2]);
        const std::chrono::duration<double, std::milli> taken = std::chrono::steady_clock::now() - start;
        std::cout << taken.count() << '\n';
    }
    return 0;
}
