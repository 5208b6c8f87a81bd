// Damaged files in the hands of the program: none crashes it, none stops it, and no other file changes.
//
//     damage ROUNDS [SEED [FORMAT]]
//
// So many files of each format, or of the one, damaged by the seeds from SEED on. The first fault of a format is told
// with what repeats it, and the file stays in the working folder.

#include "browser/GroupListPane.h"
#include "browser/MainWindow.h"
#include "browser/ThumbnailPages.h"
#include "check/GroupRepair.h"
#include "check/RepairPasses.h"
#include "check/frmSplash.h"
#include "check/frmThumbnail.h"
#include "platform/media/FilgraphManager.h"
#include "platform/media/FilmSurface.h"
#include "platform/media/MediaService.h"
#include "platform/media/TestSounds.h"
#include "platform/pictures/TestPictures.h"
#include "platform/qt/pictures/PictureData.h"
#include "platform/sdl/SoundDevice.h"
#include "search/frmSearch.h"
#include "store/GroupFile.h"
#include "store/Log.h"
#include "viewer/PhotoDisplay.h"

#include <iostream>
#include <malloc.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

namespace trovarium {

namespace {

namespace fs = std::filesystem;

constexpr unsigned Deadline = 20; // seconds for one file
Desktop* theDesktop = nullptr;

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

// The files of a format as they should be, and what is done with the damaged one, which lies there: whether it
// showed something.
struct Trial {
    std::vector<std::string> seeds;
    std::function<bool(const std::string& native)> use;
    bool isText = false;
};

// What a damaged picture shows may be odd, but never depends on what lay in memory before.
bool showsPicture(const std::string& native)
{
    PictureService& pictures = theDesktop->pictures();
    QImage images[2];
    for (QImage& image : images) {
        mallopt(M_PERTURB, &image == &images[0] ? 0x11 : 0xEE);
        const auto failure = attempt([&] { image = pictures.load(fromNativePath(native)).data()->pixels; });
        EXPECT_EQ(failure.has_value(), image.isNull());
    }
    mallopt(M_PERTURB, 0);
    EXPECT_TRUE(images[0] == images[1]) << "it shows what lay in memory";
    attempt([&] { pictures.loadReduced(fromNativePath(native), 10); });
    return !images[0].isNull();
}

bool showsFilm(const std::string& native)
{
    return !attempt([&] {
        const auto graph = theDesktop->media().newFilgraphManager();
        graph->RenderFile(fromNativePath(native));
        graph->put_Owner(std::make_shared<FilmSurface>());
        graph->Run();
        graph->WaitForCompletion(20);
        graph->put_CurrentPosition(0.5);
    });
}

// The device goes on behind a damaged file: what is mixed goes into `mixed`.
bool sounds(SoundDevice& device, const std::string& native, const std::string& mixed)
{
    device.playClip(native);
    device.carryOut({MusicCommand::Act::Open, "x", native});
    device.carryOut({MusicCommand::Act::Play, "x", {}});
    fs::resize_file(mixed, 0);
    EXPECT_TRUE(theDesktop->waitUntil([&] { return fs::file_size(mixed) > 0; }, 5000)) << "silent";
    device.carryOut({MusicCommand::Act::Close, "x", {}});
    return true;
}

// A library with one file that gets damaged, as a start meets it and the window uses it.
class DamagedLibrary : public MainWindow {
public:
    explicit DamagedLibrary(const std::string& format)
    {
        putPhotos(names(3));
        putGroup("Alps", {"p3.jpg", "p1.jpg", "p2.jpg"});
        putGroup("Rome", {"p3.jpg", "p1.jpg"});
        std::string log = "Created 2001-02-03 04:05:06\r\n";
        while (log.size() < 60'000)
            log += "01-02-03 04:05:06: An error has occurred in 'test'. Error = Overflow\r\n";
        test.put(test.library() + "\\Trovarium.Log", log);
        test.setSetting("SourceFolders", "Info", test.paths().InfoPath);
        test.setSetting("SourceFolders", "MidiMusic", test.paths().MidiPath);
        test.setSetting("Options", "AutoFix", "True");
        // Damaged settings and links lead anywhere: nothing outside is touched.
        desktop.files().setFaultHook([cage = test.folder().inside()](FileOperation operation, std::string_view path) {
            if (operation != FileOperation::Exists && (!path.starts_with(cage) || path.find("..") != path.npos))
                throw Failure(FailureKind::PathFileAccess);
        });
        open();
        main().optInfoPosition(2).Value = true;
        startAndUse();
        putGroup("Alps", names(3));
        startAndUse(); // now every file is as the program writes it
        m_sound = test.allFiles();
        m_sound.erase("Library/Photo_SlideGroups/Found.lst"); // grows with every search
        const std::map<std::string, std::string> places{{"info", "Library/Photo_Info/p2.jpg.info"},
            {"list", "Library/Photo_SlideGroups/Alps.lst"}, {"settings", "settings/settings.txt"},
            {"log", "Library/Trovarium.Log"}};
        m_place = places.at(format);
    }

    std::vector<std::string> seeds() const { return {m_sound.at(m_place), m_sound.at(m_place) + m_sound.at(m_place)}; }

    bool meets(const std::string& native)
    {
        for (const auto& [path, bytes] : test.allFiles())
            if (m_sound.count(path) == 0)
                fs::remove(test.folder().native(path));
        for (const auto& [path, bytes] : m_sound)
            if (!fs::exists(test.folder().native(path)) || test.folder().read(path) != bytes)
                test.folder().write(path, bytes);
        fs::copy_file(native, test.folder().native(m_place), fs::copy_options::overwrite_existing);
        const bool isEmpty = fs::file_size(native) == 0;
        const bool shown = startAndUse();
        std::map<std::string, std::string> after = test.allFiles();
        for (const auto& [path, bytes] : m_sound) {
            // Every check writes the list of all photographs, and every failure is logged. Without information a
            // photograph leaves the groups, and its thumbnail is made where the information leads.
            const bool follows = path.ends_with(".Log") || path.ends_with("  All Photos  .lst")
                || (isEmpty && path.ends_with(".lst")) || path.ends_with("Thumbnails/p2.jpg");
            EXPECT_TRUE(path == m_place || follows || after[path] == bytes) << path << " has changed";
        }
        return shown;
    }

private:
    void TestBody() override { }

    bool startAndUse()
    {
        Album& album = test.album();
        readFolderSettings(album);
        if (test.paths().SlideGroupPath.empty())
            return false; // ends the program
        CheckDirPaths(album, desktop);
        RepairPasses(album, m_splash(), m_builder).CheckFolderContents();
        RemoveMissingPhotosFromGroup(album, desktop);
        removeLeftOvers(album);

        bool shown = false;
        main().groupList().LoadGroupNames();
        main().pages().LoadSlideGroup("Alps.lst");
        main().photoDisplay().DisplayPhoto(2, true, shown);
        const bool isShown = shown;
        robot.click(main().cmdEditPhotoInfo);
        main().photoDisplay().DisplayPhoto(3, true, shown); // saves the second
        robot.click(main().cmdEditPhotoInfo);
        if (const int last = group().GroupSelect.upperBound(); last > 0) {
            group().GroupSelect(last) = 1; // out, in again, and to the end, where it was
            RemoveFromGroupFile(album, "Alps.lst");
            AddToGroup(album, "Alps.lst");
            ReorderGroupFile(album, "Alps.lst", last);
        }
        m_search.txtTitle.Text = "p";
        m_search.cmdSearch_Click();
        m_search.cmbGroupName.Text = "Found";
        m_search.cmdSave_Click();

        const std::string options = album.Settings().GetOWSetting("Trovarium", "Options", "AutoFix", "?");
        test.setSetting("Import", "LastPath", "/a\\b ");
        EXPECT_EQ(album.Settings().GetOWSetting("Trovarium", "Import", "LastPath", "?"), "/a\\b ");
        EXPECT_EQ(album.Settings().GetOWSetting("Trovarium", "Options", "AutoFix", "?"), options);
        logFailure(album, "damage", Failure(FailureKind::Overflow));
        EXPECT_TRUE(test.log().ends_with("'damage'. Error = Overflow\r\n"));
        desktop.files().closeAll(); // a failed look for a link leaves its file open
        return isShown;
    }

    FormSlot<frmThumbnail> m_builder{
        desktop, [this] { return std::make_unique<frmThumbnail>(desktop, test.album(), video); }};
    FormSlot<frmSplash> m_splash{desktop, [this] { return std::make_unique<frmSplash>(desktop, test.album()); }};
    frmSearch m_search{desktop, test.album(), main()};
    std::map<std::string, std::string> m_sound; // files
    std::string m_place;
};

const std::vector<std::string> Formats{"jpg", "gif", "bmp", "png", "webp", "tiff", "wmf", "avi", "mov", "mpg", "wav",
    "mid", "info", "list", "settings", "log"};

Trial trialOf(const std::string& format, const TemporaryFolder& folder)
{
    const QImage scene = testScene(64, 48);
    const std::string ones(64 * 3 * 48, '\1');
    const std::string ink = inkJpeg("\xFF\xEE\0\x0E"s + "Adobe\0\x64\0\0\0\0\0"s);
    if (format == "jpg")
        return {{jpegBytes(scene), jpegBytes(scene, true), withOrientation(jpegBytes(scene), 6, true),
                    written(scene, "jpg", QColorSpace::DisplayP3), withProfile(ink, inkProfile())},
            showsPicture};
    if (format == "gif")
        return {{gifBytes(64, 48, 10, 20, 1)}, showsPicture};
    if (format == "bmp")
        return {
            {bitmapFile(64, 48, 24, ones), bitmapFile(64, 48, 8, ones, std::string(1024, '\x55'), 1)}, showsPicture};
    if (format == "wmf")
        return {{wmfFile(wmfScene(), {0, 0, 1200, 800, 960})}, showsPicture};
    if (format == "png" || format == "webp" || format == "tiff")
        return {{written(scene, format.c_str()), written(scene, format.c_str(), QColorSpace::DisplayP3)}, showsPicture};
    if (format == "avi" || format == "mov" || format == "mpg") {
        std::ifstream clip(FILMS "/sound." + format, std::ios::binary);
        return {{std::string(std::istreambuf_iterator<char>(clip), {})}, showsFilm};
    }
    if (format == "wav" || format == "mid") {
        const std::string mixed = folder.native("mixed");
        setenv("SDL_AUDIODRIVER", "disk", 1);
        setenv("SDL_DISKAUDIOFILE", mixed.c_str(), 1);
        setenv("SDL_DISKAUDIODELAY", "1", 1); // millisecond, for 12 of sound
        const auto device = std::make_shared<SoundDevice>();
        return {{format == "wav" ? clip(1000) : Piece},
            [=](const std::string& native) { return sounds(*device, native, mixed); }};
    }
    const auto library = std::make_shared<DamagedLibrary>(format);
    return {library->seeds(), [library](const std::string& native) { return library->meets(native); }, true};
}

// What a process that may crash tells the one that started it.
struct Told {
    unsigned seed;
    int shown;
};

int meetDamage(const std::string& format, int rounds, const TemporaryFolder& folder, Told& told)
{
    setenv("TMPDIR", folder.path().c_str(), 1);
    setenv("QT_LOGGING_RULES", "*=false", 1);
    int argc = 1;
    char name[] = "damage";
    char* argv[] = {name, nullptr};
    FileService files;
    Desktop desktop(argc, argv, files, Pace::Immediate);
    theDesktop = &desktop;
    EXPECT_NE(std::freopen(folder.native("errors").c_str(), "a", stderr), nullptr); // libraries have much to say
    const testing::TestResult& result = testing::UnitTest::GetInstance()->ad_hoc_test_result();
    const Trial trial = trialOf(format, folder);
    for (; rounds > 0 && !result.Failed(); --rounds) {
        alarm(Deadline);
        fs::resize_file(folder.native("errors"), 0);
        std::mt19937 dice(told.seed);
        const std::string bytes = damaged(trial.seeds[dice() % trial.seeds.size()], trial.isText, dice);
        fs::remove(folder.native("damaged")); // a file that is emptied in place is flushed to the disk at its close
        folder.write("damaged", bytes);
        told.shown += trial.use(folder.native("damaged")) ? 1 : 0;
        EXPECT_TRUE(!trial.isText || folder.read("errors").empty()) << "a failure that no handler took";
        told.seed += result.Failed() ? 0 : 1;
    }
    alarm(Deadline);
    return result.Failed() ? 1 : 0;
}

} // namespace

Desktop& testDesktop()
{
    return *theDesktop;
}

} // namespace trovarium

// Kept by libraries until the end.
extern "C" const char* __lsan_default_suppressions() // NOLINT: its given name
{
    return "leak:libfontconfig";
}

int main(int argc, char** argv)
{
    using namespace trovarium;

    testing::InitGoogleTest(&argc, argv);
    const int rounds = argc > 1 ? std::atoi(argv[1]) : 100;
    const unsigned first = argc > 2 ? static_cast<unsigned>(std::atoi(argv[2])) : 1;
    void* shared = mmap(nullptr, sizeof(Told), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    int faults = 0;
    for (const std::string& format : Formats) {
        if (argc > 3 && format != argv[3])
            continue;
        const TemporaryFolder folder;
        Told& told = *new (shared) Told{first, 0};
        const auto start = std::chrono::steady_clock::now();
        const pid_t child = fork();
        if (child == 0)
            std::exit(meetDamage(format, rounds, folder, told));
        int status = 0;
        waitpid(child, &status, 0);
        const std::chrono::duration<double> time = std::chrono::steady_clock::now() - start;
        std::cout << format << ": " << told.seed - first << " files, " << told.shown << " shown, " << time.count()
                  << " s" << std::endl;
        if (status == 0)
            continue;
        ++faults;
        const std::string kept = "damaged-" + std::to_string(told.seed) + "." + format;
        fs::copy_file(folder.native("damaged"), kept, fs::copy_options::overwrite_existing);
        std::cout << folder.read("errors") << (WIFSIGNALED(status) && WTERMSIG(status) == SIGALRM ? "hangs" : "fails")
                  << " (status " << status << ") on " << kept << ", again by: damage 1 " << told.seed << " " << format
                  << std::endl;
    }
    return faults;
}
