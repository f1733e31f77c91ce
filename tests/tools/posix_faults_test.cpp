// What POSIX can put in a file's place, and what it can do to a save.

#include "tool_test.h"

#include <csignal>
#include <limits>
#include <random>

#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tool_test {
namespace {

using namespace VOR2_LOADER;
using Names = std::vector<std::string>;
namespace fs = std::filesystem;

class PosixFaultsTest : public ToolTest {
protected:
    ~PosixFaultsTest() override {
        std::error_code ignored;
        fs::remove_all(profiles(), ignored);
    }
    /// Where a run that is cut short leaves its profile when coverage is measured: half a one would spoil the others.
    static fs::path profiles() { return fs::temp_directory_path() / ("vor2_profiles_" + std::to_string(getpid())); }
    /// Saves "a.vr2", which refers to "sub/b.vr2", and gives the names of outputs that have something to lose.
    Names save_two_scenes() const {
        VOR2 scene = two_nodes();
        scene.matrix_hierarchy.nodes.grow_by(40);
        fs::create_directories(path("in/sub"));
        fs::create_directories(path("out/sub"));
        save(scene, "in/sub/b.vr2");
        scene.xrefs_15.emplace_back(make_owned<VOR2_XREF<15>>())->file_name = TEXT(u"sub\\b.vr2");
        save(scene, "in/a.vr2");
        Names outputs = {"out/a.vr2", "out/sub/b.vr2"};
        for (const std::string& output : outputs) save(two_nodes(), output);
        return outputs;
    }
    std::vector<std::string> bytes_of(const Names& files) const {
        std::vector<std::string> bytes;
        for (const std::string& file : files) bytes.push_back(read(file));
        return bytes;
    }
    /// Runs on a disk that takes no more than so many bytes a file.
    Outcome run_on_small_disk(const Names& line, rlim_t room) {
        rlimit limit{};
        getrlimit(RLIMIT_FSIZE, &limit);
        const rlimit small{room, limit.rlim_max};
        setrlimit(RLIMIT_FSIZE, &small);
        const Outcome outcome = run(line, {"GCOV_PREFIX=" + profiles().string()});
        setrlimit(RLIMIT_FSIZE, &limit);
        return outcome;
    }
    /// Starts the tool in the folder, without waiting for it.
    pid_t start(const Names& line) const {
        std::vector<char*> words{const_cast<char*>(VOR2_TOOL)};
        for (const std::string& word : line) words.push_back(const_cast<char*>(word.c_str()));
        words.push_back(nullptr);
        const std::string folder = path(".");
        const pid_t child = fork();
        if (child != 0) return child;
        setenv("GCOV_PREFIX", profiles().c_str(), 1); // NOLINT(concurrency-mt-unsafe): nothing else runs here
        alarm(60);
        if (chdir(folder.c_str()) == 0) execv(VOR2_TOOL, words.data());
        _exit(127);
    }
};

TEST_F(PosixFaultsTest, nothing_that_could_wait_or_never_end_is_read) {
    save(two_nodes(), "a.vr2");
    fs::create_directory(path("folder"));
    ASSERT_EQ(mkfifo(path("pipe").c_str(), 0600), 0);
    for (const std::string input : {"pipe", "/dev/zero", "/dev/stdin", "folder"}) {
        const std::string words = input == "folder" ? "s a folder" : "s no regular file";
        std::vector<Names> lines = {{"info", input},
                                    {"upgrade", input, "out.vr2"},
                                    {"import", input, "-o", "out.ma"},
                                    {"export", input, "-o", "out.vr2"},
                                    {"host", "--script", input}};
        Names commands = {"file -import -type \"Vor2\" \"" + input + "\""};
        if (input == "pipe") {
            lines.insert(
                lines.end(),
                {{"dump", input}, {"pose", input}, {"diff", "a.vr2", input}, {"check", input}, {"host", input}});
            ASSERT_EQ(mkfifo(path("pipe.glb").c_str(), 0600), 0);
            expect_refused({"convert", "pipe.glb", "out.vr2"}, "pipe.glb", words);
            fs::remove(path("pipe.glb"));
            commands.insert(commands.end(), {"source pipe", "file -import pipe", "file -r -ns x pipe"});
        }
        for (const Names& line : lines) expect_refused(line, input, words);
        for (const std::string& command : commands) expect_refused({"host", "-c", command}, "line 1", words);

        VOR2 scene = two_nodes();
        scene.xrefs_15.emplace_back(make_owned<VOR2_XREF<15>>())->file_name =
            TEXT(std::u16string(input.begin(), input.end()));
        save(scene, "referring.vr2");
        expect_refused({"info", "referring.vr2"}, "referring.vr2", "can't be opened");
        write("referring.ma", "file -r -ns \"x\" \"" + input + "\"; createNode joint -n \"j\";");
        expect_refused({"export", "referring.ma", "-o", "exported.vr2"}, "referring.ma", "isn't there");
    }
    EXPECT_EQ(listing(), (Names{"a.vr2", "folder", "pipe", "referring.ma", "referring.vr2"}));
}

TEST_F(PosixFaultsTest, a_disk_that_fills_up_costs_no_file) {
    const Names outputs = save_two_scenes();
    const Names before = listing();
    const std::vector<std::string> kept = bytes_of(outputs);
    const rlim_t size = read("in/a.vr2").size();
    for (rlim_t room = 0; room < size; room += size / 13) {
        const Outcome outcome = run_on_small_disk({"upgrade", "in/a.vr2", "out/a.vr2"}, room);
        EXPECT_EQ(outcome.exit_code, 1) << room;
        EXPECT_EQ(bytes_of(outputs), kept) << room;
        EXPECT_EQ(listing(), before) << room;
    }
    EXPECT_EQ(run_on_small_disk({"upgrade", "in/a.vr2", "out/a.vr2"}, size).exit_code, 0);
    EXPECT_EQ(bytes_of(outputs), bytes_of({"in/a.vr2", "in/sub/b.vr2"}));
}

TEST_F(PosixFaultsTest, every_verb_that_writes_keeps_what_it_cannot_replace) {
    VOR2 scene = two_nodes();
    VOR2_RIGID& box = *scene.rigids.emplace_back(make_owned<VOR2_RIGID>());
    box.vertices.grow_by(1);
    box.vertices[0].normal.x = std::numeric_limits<float>::infinity();
    save(scene, "a.vr2");
    ASSERT_EQ(run({"import", "a.vr2", "-o", "a.ma"}).exit_code, 0);
    const std::vector<Names> lines = {
        {"upgrade", "a.vr2", "out.vr2"},           {"check", "a.vr2", "--fix", "out.vr2"},
        {"check", "a.vr2", "--report", "out.txt"}, {"import", "a.vr2", "-o", "out.ma"},
        {"convert", "a.vr2", "out.glb"},           {"export", "a.ma", "-o", "out.vr2"},
        {"host", "a.ma", "--save", "out.ma"},      {"host", "a.ma", "-c", "select -r root; VOR2Export -f \"out.vr2\""}};
    for (const char* output : {"out.vr2", "out.txt", "out.ma", "out.glb"}) write(output, "what was there");
    const Names before = listing();
    const auto expect_kept = [&](const Names& line) {
        const Names outputs = {"out.vr2", "out.txt", "out.ma", "out.glb"};
        EXPECT_EQ(bytes_of(outputs), std::vector<std::string>(4, "what was there")) << line[0];
        EXPECT_EQ(listing(), before) << line[0];
    };
    for (const Names& line : lines) {
        for (const rlim_t room : {0U, 100U}) {
            EXPECT_EQ(run_on_small_disk(line, room).exit_code, 1) << line[0];
            expect_kept(line);
        }
    }
    if (geteuid() == 0) return; // to whom no folder is closed
    ASSERT_EQ(chmod(path(".").c_str(), 0500), 0);
    for (const Names& line : lines) {
        EXPECT_EQ(run(line).exit_code, 1);
        expect_kept(line);
    }
    chmod(path(".").c_str(), 0700);
}

TEST_F(PosixFaultsTest, a_save_that_is_killed_leaves_the_old_file_or_the_new_one) {
    VOR2 scene = two_nodes();
    scene.matrix_hierarchy.nodes.grow_by(4000);
    save(scene, "in.vr2");
    save(two_nodes(), "out.vr2");
    const std::string old_bytes = read("out.vr2"), new_bytes = read("in.vr2");
    std::minstd_rand chance; // NOLINT(cert-msc32-c,cert-msc51-cpp): the same moments in every run
    int most = 40000;
    for (int i = 0; i < 24; ++i) {
        write("out.vr2", old_bytes);
        const pid_t child = start({"upgrade", "in.vr2", "out.vr2"});
        usleep(static_cast<unsigned>(chance() % most));
        kill(child, i % 2 == 0 ? SIGKILL : SIGTERM);
        int status = 0;
        waitpid(child, &status, 0);
        const std::string left = read("out.vr2");
        EXPECT_TRUE(left == old_bytes || left == new_bytes);
        // Most of the time goes into starting; look for the moments of saving by where the last ones fell.
        if (WIFSIGNALED(status))
            most += 4000;
        else
            most = std::max(4000, most - 12000);
        for (const std::string& file : listing()) {
            const bool scratch = file.starts_with(".vor2-") && file.ends_with(".tmp");
            // Who is told to end puts away what it began; who is killed can't.
            EXPECT_TRUE((scratch && i % 2 == 0) || file == "in.vr2" || file == "out.vr2") << file;
            if (scratch) fs::remove(path(file));
        }
    }
    EXPECT_EQ(run({"upgrade", "in.vr2", "out.vr2"}).exit_code, 0);
    EXPECT_EQ(read("out.vr2"), new_bytes);
}

} // namespace
} // namespace tool_test
