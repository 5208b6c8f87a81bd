// SPDX-License-Identifier: GPL-3.0-or-later

// Damaged files in the hands of the program: none crashes it, none stops it, and no other file changes.
//
//     damage ROUNDS [SEED [FORMAT]]
//
// So many files of each format, or of the one, damaged by the seeds from SEED on.

#include "platform/media/FilmSurface.h"
#include "platform/media/MediaService.h"
#include "platform/media/SoundDevice.h"
#include "platform/media/TestSounds.h"
#include "platform/pictures/PictureData.h"
#include "platform/pictures/TestPictures.h"
#include "startup/StartedProgram.h"
#include "store/Log.h"

#include <QApplication>

#include <iostream>
#include <malloc.h>
#include <sstream>
#include <unistd.h>

namespace trovarium {

namespace {

constexpr unsigned Deadline = 30; // seconds for one file, and for the end of the program behind the last

// One to four changes, the rest of them in the head. Lines, lengths and encodings are a matter of texts.
std::string damaged(std::string bytes, bool isText, std::mt19937& dice)
{
    static const std::string odd[] = {"\xEF\xBB\xBF", "\xFF\xFE", "\xC3", "\xED\xA0\x80", "\xF4\x90\x80\x80",
        "\xE2\x80\xAE", "\0"s, "\x1A", "\x1B[", "\x7F", "\r", "\n", "=", "\\..\\", "%00", "*.?"};
    const auto below = [&](std::size_t limit) { return limit == 0 ? 0 : dice() % limit; };
    for (std::size_t changes = 1 + below(4); changes > 0; --changes) {
        const std::size_t at = below(below(3) == 0 ? std::min<std::size_t>(bytes.size(), 64) : bytes.size());
        std::string piece = bytes.substr(at, 1 + below(below(8) == 0 ? bytes.size() : 4));
        const std::size_t start = bytes.rfind('\n', at) + 1;
        const std::string line = bytes.substr(start, bytes.find('\n', start) - start + 1);
        const auto fill = [&](const std::function<char()>& byte) {
            std::generate(piece.begin(), piece.end(), byte);
            bytes.replace(at, piece.size(), piece);
        };
        const auto overwrite = [&] { fill([&] { return static_cast<char>(dice()); }); };
        const std::function<void()> kinds[] = {
            overwrite,
            overwrite,
            overwrite,
            [&] { fill([] { return '\0'; }); },
            [&] { fill([] { return '\xFF'; }); },
            [&] { bytes.resize(at); },
            [&] { bytes.insert(at, piece); },
            [&] { bytes.erase(at, piece.size()).insert(std::min(bytes.size(), at + 1 + below(64)), piece); },
            // of texts only
            [&] { bytes.insert(start, line); },
            [&] { bytes.erase(start, line.size()); },
            [&] { bytes.insert(at, below(50'000), below(2) == 0 ? 'x' : '\xE9'); },
            [&] { std::erase(bytes, below(2) == 0 ? '\r' : '\n'); },
            [&] { bytes.insert(at, odd[below(std::size(odd))]); },
            [&] { bytes.insert(start, odd[below(std::size(odd))]); },
        };
        kinds[below(isText ? std::size(kinds) : 8)]();
    }
    return bytes;
}

// What a damaged picture shows may be odd, but never depends on what lay in memory before. This can't be had of
// libheif: a block that a damaged file ends before, or what a tile leaves of its cell, stays as it was.
bool showsPicture(const std::string& native)
{
    PictureService& pictures = testDesktop().pictures();
    QImage images[2];
    for (QImage& image : images) {
        mallopt(M_PERTURB, &image == &images[0] ? 0x11 : 0xEE);
        const auto failure = attempt([&] { image = pictures.load(fromNativePath(native)).data()->pixels; });
        EXPECT_EQ(failure.has_value(), image.isNull());
    }
    mallopt(M_PERTURB, 0);
    const bool isHeif = native.ends_with("heic") || native.ends_with("avif");
    EXPECT_TRUE(isHeif || images[0] == images[1]) << "it shows what lay in memory";
    attempt([&] { pictures.loadReduced(fromNativePath(native), 10); });
    return !images[0].isNull();
}

bool showsFilm(const std::string& native)
{
    return !attempt([&] {
        const auto graph = testDesktop().media().newFilgraphManager();
        graph->RenderFile(fromNativePath(native));
        graph->put_Owner(std::make_shared<FilmSurface>());
        graph->Run();
        graph->WaitForCompletion(20);
        graph->put_CurrentPosition(0.5);
    });
}

// The device goes on behind a damaged file; what it mixes goes into another.
bool sounds(const std::string& native)
{
    static const std::string mixed = native + ".mixed";
    for (const auto& [name, value] : {std::pair{"SDL_AUDIODRIVER", "disk"}, {"SDL_DISKAUDIOFILE", mixed.c_str()},
             {"SDL_DISKAUDIODELAY", "1"}}) // milliseconds for 12 of sound
        setenv(name, value, 1);
    static const std::atomic<unsigned> latestClip = 0;
    static SoundDevice device(latestClip);
    device.playClip(native, latestClip);
    if (native.ends_with("mid"))
        device.carryOut({MusicCommand::Act::Open, "x", native});
    device.carryOut({MusicCommand::Act::Play, "x", {}});
    fs::resize_file(mixed, 0); // and what follows keeps its place, with nothing before it
    const bool goesOn = testDesktop().waitUntil([&] { return fs::file_size(mixed) > 0; }, 5000);
    device.carryOut({MusicCommand::Act::Close, "x", {}});
    EXPECT_TRUE(goesOn) << "silent";
    return goesOn;
}

// The files that get damaged, by format.
const std::map<std::string, std::string> Places{{"info", "Library/Photo_Info/2.jpg.info"},
    {"list", "Library/Photo_SlideGroups/Gr\u00F6\u00DFe \u5C71.lst"},
    {"settings", "config/OmbrelaneWorks/settings.txt"}, {"log", "Library/Trovarium.Log"}};

// A library with one file that gets damaged, as a start meets it and its user goes through it.
class DamagedLibrary : public Start {
public:
    DamagedLibrary() { prepareAll(); }

    std::vector<std::string> sound(const std::string& format) const
    {
        const std::string bytes = folder.read(Places.at(format));
        return {bytes, bytes + bytes};
    }

    bool meets(const std::string& format, const std::string& damaged)
    {
        prepareAll();
        folder.write(Places.at(format), damaged);
        const std::set<std::string> before = everything("Library/");
        ScriptedPrompts prompts(desktop);
        prompts.agreeWith("");
        // Damaged settings and links lead anywhere: nothing outside is touched.
        const int code = start({}, [cage = folder.inside()](FileOperation operation, std::string_view path) {
            if (operation != FileOperation::Exists && (!path.starts_with(cage) || path.find("..") != path.npos))
                throw Failure(FailureKind::PathFileAccess);
        });
        if (code == 0)
            use();
        end();
        const std::set<std::string> after = everything("Library/");
        for (const std::string& file : before) {
            const bool changes = file.starts_with(Places.at(format)) || file.find(".lst") != file.npos;
            EXPECT_TRUE(changes || placeOf(file, after) != "nowhere") << file;
        }
        return code == 0;
    }

private:
    void TestBody() override { }

    void prepareAll()
    {
        prepare();
        for (const auto& [section, key, value] :
            {std::tuple{"SourceFolders", "Info", folder.inside("Library\\Photo_Info\\")},
                {"SourceFolders", "MidiMusic", folder.inside("Library\\Photo_Midi\\")},
                {"Options", "AutoFix", "True"s}})
            COWReg().SetOWSetting("Trovarium", section, key, value);
        std::string log;
        for (int i = 0; i < 1000; ++i)
            log += "An error has occurred in 'test'. Error = 7\r\n";
        folder.write(Places.at("log"), log);
    }
    void use()
    {
        program->mainWindow()().dialogs().showFirstTime = [] {}; // else it waits for its user
        travel();
        const std::string options = album->Settings().GetOWSetting("Trovarium", "Options", "AutoFix", "?");
        album->Settings().SetOWSetting("Trovarium", "Import", "LastPath", "/a\\b ");
        EXPECT_EQ(album->Settings().GetOWSetting("Trovarium", "Import", "LastPath", "?"), "/a\\b ");
        EXPECT_EQ(album->Settings().GetOWSetting("Trovarium", "Options", "AutoFix", "?"), options);
        logFailure(*album, "damage", Failure(FailureKind::Overflow));
        EXPECT_TRUE(folder.read(Places.at("log")).ends_with("'damage'. Error = Overflow\r\n"));
    }
};

std::string film(const std::string& format)
{
    std::ifstream stream(FILMS "/sound." + format, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

std::vector<std::pair<std::string, std::vector<std::string>>> soundFiles(const DamagedLibrary& library)
{
    const QImage scene = testScene(64, 48);
    const QColorSpace wide(QColorSpace::DisplayP3);
    const std::string ones(64 * 3 * 48, '\1');
    const std::string ink = inkJpeg("\xFF\xEE\0\x0E"s + "Adobe\0\x64\0\0\0\0\0"s);
    std::vector<std::pair<std::string, std::vector<std::string>>> files{
        {"jpg",
            {jpegBytes(scene), jpegBytes(scene, true), withOrientation(jpegBytes(scene), 6),
                written(scene, "jpg", wide), withProfile(ink, inkProfile())}},
        {"gif", {gifBytes(64, 48, 10, 20, 1)}},
        {"bmp", {bitmapFile(64, 48, 24, ones), bitmapFile(64, 48, 8, ones, std::string(1024, '\x55'), 1)}},
        {"png", {written(scene, "png"), written(scene, "png", wide)}},
        {"webp", {written(scene, "webp"), written(scene, "webp", wide)}},
        {"tiff", {written(scene, "tiff"), written(scene, "tiff", wide)}},
        {"heic", {sample("turned.heic")}},
        {"avif", {sample("deep.avif"), sample("grid.avif"), sample("gray.avif")}},
        {"jxl", {sample("turned.jxl"), sample("p3.jxl")}},
        {"wmf", {wmfFile(wmfScene(), {0, 0, 1200, 800, 960})}},
        {"avi", {film("avi")}},
        {"mov", {film("mov")}},
        {"mpg", {film("mpg")}},
        {"wav", {clip(1000)}},
        {"mid", {Piece}},
    };
    for (const auto& [format, place] : Places)
        files.emplace_back(format, library.sound(format));
    return files;
}

// Whether the damaged file showed something.
bool meet(DamagedLibrary& library, const std::string& format, const std::string& native, const std::string& damaged)
{
    if (Places.count(format) != 0)
        return library.meets(format, damaged);
    if (format == "wav" || format == "mid")
        return sounds(native);
    return format == "avi" || format == "mov" || format == "mpg" ? showsFilm(native) : showsPicture(native);
}

} // namespace

// The last line of a run that fails or hangs repeats the fault and tells where the file is.
TEST(Damage, CrashesAndStopsNothingAndChangesNoOtherFile)
{
    const QStringList arguments = QApplication::arguments();
    const unsigned rounds = arguments.value(1, "100").toUInt();
    const unsigned first = arguments.value(2, "1").toUInt();
    const std::string only = arguments.value(3).toStdString();
    setenv("TMPDIR", "/dev/shm", 0); // each file makes the program wait for a disk several times
    std::ostringstream reported;
    std::streambuf* const errors = std::cerr.rdbuf(reported.rdbuf());
    DamagedLibrary library;
    const TemporaryFolder files;
    stderr = std::fopen("/dev/null", "w"); // for the words of libraries; sanitizers report past it
    for (const auto& [format, sound] : soundFiles(library)) {
        const std::string native = files.native("damaged." + format);
        unsigned shown = 0;
        for (unsigned seed = first; seed < first + rounds && (only.empty() || only == format); ++seed) {
            std::cout << "\rdamage 1 " << seed << " " << format << " # " << native << std::flush;
            alarm(Deadline);
            std::mt19937 dice(seed);
            const std::string bytes = damaged(sound[dice() % sound.size()], Places.count(format) != 0, dice);
            fs::remove(native); // a file that is emptied in place is flushed to the disk at its close
            std::ofstream(native, std::ios::binary) << bytes;
            shown += meet(library, format, native, bytes) ? 1 : 0;
            // Nothing takes the failure of the one setting that the window reads by itself.
            const std::string left = reported.str();
            EXPECT_TRUE(left.empty() || (format == "settings" && left.starts_with("frmMain: Type mismatch"))) << left;
            reported.str({});
            if (HasFailure())
                std::_Exit(1); // the files stay
        }
        std::cout << "\r" << format << ": " << shown << " shown\33[K\n";
    }
    std::cerr.rdbuf(errors);
}

} // namespace trovarium

// Libraries ask for more memory than there is, and take a no.
extern "C" const char* __asan_default_options() // NOLINT: its given name
{
    return "allocator_may_return_null=1";
}
