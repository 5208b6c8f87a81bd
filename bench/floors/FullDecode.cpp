// Decodes a JPEG file in full, several times, and tells the milliseconds of each.
//
//   floor_decode COUNT FILE

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
    jpeg_read_header(&jpeg, TRUE);
    jpeg.out_color_space = JCS_EXT_BGRX;
    jpeg_start_decompress(&jpeg);
    const std::size_t rowBytes = std::size_t{jpeg.output_width} * 4;
    const auto pixels = std::make_unique_for_overwrite<unsigned char[]>(rowBytes * jpeg.output_height);
    while (jpeg.output_scanline < jpeg.output_height) {
        unsigned char* row = pixels.get() + rowBytes * jpeg.output_scanline;
        jpeg_read_scanlines(&jpeg, &row, 1);
    }
    jpeg_finish_decompress(&jpeg);
    jpeg_destroy_decompress(&jpeg);
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 3) {
        std::cerr << "usage: floor_decode COUNT FILE\n";
        return 2;
    }
    for (int i = std::atoi(argv[1]); i > 0; --i) {
        const auto start = std::chrono::steady_clock::now();
        decode(argv[2]);
        const std::chrono::duration<double, std::milli> taken = std::chrono::steady_clock::now() - start;
        std::cout << taken.count() << '\n';
    }
    return 0;
}
