#include "metadata/Streams/FileStream.h"
#include "ErrorHandling/Exceptions.h"
#include "TempFolder.h"
#include "metadata/Streams/FileReplacement.h"
#include "metadata/Streams/TempFile.h"

#include <algorithm>
#include <csignal>
#include <gtest/gtest.h>
#include <set>
#include <sys/resource.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>
#include <utility>
#include <vector>

namespace ImagingFramework {
namespace {

namespace fs = std::filesystem;

class FileStreamFiles : public testing::Test, protected TempFolder {
protected:
    static unsigned Mode(const fs::path& name) {
        struct stat status {};
        return ::stat(name.c_str(), &status) == 0 ? static_cast<unsigned>(status.st_mode) & 07777U : 0;
    }
    /// What a save does.
    static void Save(const fs::path& name, const std::string& text, bool completed) {
        FileStream stream(name, FileStreamFlags::Encoder);
        EXPECT_TRUE(stream.Write(text.data(), text.size(), nullptr));
        stream.SetCompleted(completed);
        stream.Close();
        stream.Close();
    }
};

TEST_F(FileStreamFiles, ASaveReplacesTheTargetOnlyWhenItIsCompleted) {
    const fs::path name = Write("picture", "old");
    Save(name, "half", false);
    EXPECT_EQ(Read(name), "old");
    Save(name, "", true);
    EXPECT_EQ(Read(name), "old");
    {
        FileStream stream(name, FileStreamFlags::Encoder);
        EXPECT_TRUE(stream.Write("x", 1, nullptr)); // dropped without a word, as after a failure
        EXPECT_EQ(Names().size(), 2U);              // the temporary file stands beside the target
    }
    EXPECT_EQ(Read(name), "old");
    EXPECT_EQ(Names(), (std::set<std::string>{"picture"}));
    Save(name, "new", true);
    EXPECT_EQ(Read(name), "new");
    Save(m_folder / "another", "first", true);
    EXPECT_EQ(Read(m_folder / "another"), "first");
    EXPECT_EQ(Names(), (std::set<std::string>{"another", "picture"}));
}

TEST_F(FileStreamFiles, PermissionBitsAreThoseOfTheOldFileOrTheDefault) {
    const fs::path name = Write("picture", "old");
    ::chmod(name.c_str(), 0640);
    Save(name, "new", true);
    EXPECT_EQ(Mode(name), 0640U);
    const mode_t mask = ::umask(027);
    Save(m_folder / "fresh", "new", true);
    {
        FileStream stream(m_folder / "fresher", FileStreamFlags::Encoder);
        for (const auto& entry : fs::directory_iterator(m_folder)) {
            if (entry.path().extension() == ".tmp") {
                EXPECT_EQ(Mode(entry.path()), 0600U);
            }
        }
    }
    ::umask(mask);
    EXPECT_EQ(Mode(m_folder / "fresh"), 0640U);
}

TEST_F(FileStreamFiles, OwnersAreKeptWhereThatIsAllowed) {
    if (::geteuid() != 0) {
        GTEST_SKIP() << "only a privileged process may give files away";
    }
    const auto ownerOf = [](const fs::path& name) {
        struct stat status {};
        EXPECT_EQ(::stat(name.c_str(), &status), 0);
        return std::pair(status.st_uid, status.st_gid);
    };
    constexpr uid_t user = 4321;
    constexpr gid_t group = 1234;
    const fs::path name = Write("picture", "old");
    ASSERT_EQ(::chown(name.c_str(), user, group), 0);
    ::chmod(name.c_str(), 0646);
    Save(name, "new", true);
    EXPECT_EQ(ownerOf(name), std::pair(user, group));
    EXPECT_EQ(Mode(name), 0646U);
    // Another user may not: the save goes on, and the file is that user's.
    ::chmod(m_folder.c_str(), 0777);
    ASSERT_EQ(::seteuid(user + 1), 0);
    Save(name, "newer", true);
    ASSERT_EQ(::seteuid(0), 0);
    EXPECT_EQ(Read(name), "newer");
    EXPECT_EQ(ownerOf(name).first, user + 1);
    EXPECT_EQ(Mode(name), 0646U);
}

/// A place on another file system than `folder`, which may be written to; empty where there is none.
fs::path ForeignPlace(const fs::path& folder) {
    struct stat here {};
    EXPECT_EQ(::stat(folder.c_str(), &here), 0);
    for (const char* const place : {"/dev/shm", "/tmp", "/var/tmp"}) {
        struct stat there {};
        if (::stat(place, &there) == 0 && here.st_dev != there.st_dev && ::access(place, W_OK) == 0) {
            return place;
        }
    }
    return {};
}

TEST_F(FileStreamFiles, AFileOfAnotherFileSystemIsCopiedBesideTheTarget) {
    const fs::path place = ForeignPlace(m_folder);
    if (place.empty()) {
        GTEST_SKIP() << "there is no second file system to write to";
    }
    const TempFolder foreign(place);
    const fs::path name = Write("picture", "old");
    const fs::path file = foreign.Write("file", std::string(200000, 'n'));
    ::chmod(file.c_str(), 0604);
    EXPECT_EQ(ReplaceFile(file, name), 0);
    EXPECT_EQ(Read(name), std::string(200000, 'n'));
    EXPECT_EQ(Mode(name), 0604U);
    EXPECT_FALSE(fs::exists(file));
    EXPECT_EQ(Names(), (std::set<std::string>{"picture"}));
    // A failure leaves both as they were, and nothing beside them.
    foreign.Write("file", "again");
    fs::create_directory(m_folder / "folder");
    EXPECT_NE(ReplaceFile(file, m_folder / "folder"), 0);
    EXPECT_EQ(Read(file), "again");
    EXPECT_EQ(Names(), (std::set<std::string>{"folder", "picture"}));
}

TEST_F(FileStreamFiles, LinksAreFollowed) {
    fs::create_directory(m_folder / "deep");
    Write("deep/real", "old");
    fs::create_symlink("deep/real", m_folder / "link");
    fs::create_symlink(m_folder / "link", m_folder / "chain");
    Save(m_folder / "chain", "new", true);
    EXPECT_EQ(Read(m_folder / "deep/real"), "new");
    EXPECT_TRUE(fs::is_symlink(m_folder / "link"));
    EXPECT_TRUE(fs::is_symlink(m_folder / "chain"));
    fs::create_symlink("deep/coming", m_folder / "dangling");
    Save(m_folder / "dangling", "new", true);
    EXPECT_EQ(Read(m_folder / "deep/coming"), "new");
    EXPECT_TRUE(fs::is_symlink(m_folder / "dangling"));
}

TEST_F(FileStreamFiles, DevicesAndPipesAreWrittenNotReplaced) {
    const fs::path pipe = m_folder / "pipe";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    std::string got;
    std::thread reader([&] { got = Read(pipe); });
    Save(pipe, "through", true);
    reader.join();
    EXPECT_EQ(got, "through");
    EXPECT_TRUE(fs::is_fifo(pipe));
}

TEST_F(FileStreamFiles, NamesHoldWhenTheWorkingFolderChanges) {
    const fs::path before = fs::current_path();
    fs::current_path(m_folder);
    {
        FileStream saved("saved", FileStreamFlags::Encoder);
        FileStream failed("failed", FileStreamFlags::Encoder);
        FileStream empty("empty", FileStreamFlags::Write | FileStreamFlags::Create | FileStreamFlags::DeleteWhenEmpty);
        fs::current_path(before);
        EXPECT_TRUE(saved.Write("new", 3, nullptr) && failed.Write("new", 3, nullptr));
        saved.SetCompleted(true);
        EXPECT_NO_THROW(saved.Close());
    }
    EXPECT_EQ(Read("saved"), "new");
    EXPECT_EQ(Names(), (std::set<std::string>{"saved"}));
}

TEST_F(FileStreamFiles, FailuresToOpen) {
    EXPECT_THROW(FileStream("", FileStreamFlags::Decoder), ArgumentNullPointerException);
    EXPECT_THROW(FileStream(m_folder / "none", FileStreamFlags::Decoder), FileNotFoundException);
    for (const FileStreamFlags flags : {FileStreamFlags::Decoder, FileStreamFlags::Encoder}) {
        EXPECT_THROW(FileStream(m_folder / "none" / "file", flags), PathNotFoundException);
    }
    EXPECT_THROW(FileStream(m_folder, FileStreamFlags::Decoder), Exception);
    EXPECT_THROW(FileStream(m_folder, FileStreamFlags::Encoder), Exception);
    try {
        FileStream(m_folder / "none", FileStreamFlags::Decoder);
    } catch (const Exception& exception) {
        const std::string text = "Unable to open file '" + (m_folder / "none").string() + "'.";
        EXPECT_EQ(exception.GetExceptionStringRef().substr(0, text.size()), text);
    }
    // A target that has become a folder: the failure is told, and nothing is left behind.
    FileStream stream(m_folder / "late", FileStreamFlags::Encoder);
    EXPECT_TRUE(stream.Write("x", 1, nullptr));
    stream.SetCompleted(true);
    fs::create_directory(m_folder / "late");
    EXPECT_THROW(stream.Close(), Exception);
    EXPECT_EQ(Names(), (std::set<std::string>{"late"}));
}

TEST_F(FileStreamFiles, RowsAndBlocksKeepTheirOrder) {
    std::string expected;
    {
        FileStream stream(m_folder / "rows", FileStreamFlags::Encoder);
        const auto append = [&](std::size_t size, char c) {
            const std::string text(size, c);
            EXPECT_TRUE(stream.Write(text.data(), size, nullptr));
            expected += text;
            std::uint64_t position = 0;
            EXPECT_TRUE(stream.Seek(0, SeekOrigin::Current, &position));
            EXPECT_EQ(position, expected.size());
        };
        for (char c = 'A'; c < 'z'; ++c) {
            append(12000, c);
        }
        append(600000, '1');
        append(5, '2');
        std::uint64_t size = 0;
        EXPECT_TRUE(stream.Stat(&size));
        EXPECT_EQ(size, expected.size());
        append(5, '3');
        char last = 0;
        EXPECT_TRUE(stream.Seek(-1, SeekOrigin::End, nullptr) && stream.Read(&last, 1, nullptr));
        EXPECT_EQ(last, '3');
        append(5, '4');
        EXPECT_TRUE(stream.Seek(7, SeekOrigin::Begin, nullptr) && stream.Write("!", 1, nullptr));
        expected[7] = '!';
        stream.SetCompleted(true);
    }
    EXPECT_TRUE(Read(m_folder / "rows") == expected);
}

TEST_F(FileStreamFiles, AFullDeviceLeavesTheOldFile) {
    const fs::path name = Write("picture", "old");
    const struct rlimit unlimited = [] {
        struct rlimit limit {};
        ::getrlimit(RLIMIT_FSIZE, &limit);
        return limit;
    }();
    struct rlimit small = unlimited;
    small.rlim_cur = 1000;
    ::signal(SIGXFSZ, SIG_IGN);
    {
        FileStream stream(name, FileStreamFlags::Encoder);
        const std::string text(5000, 'x');
        EXPECT_TRUE(stream.Write(text.data(), text.size(), nullptr));
        stream.SetCompleted(true);
        ::setrlimit(RLIMIT_FSIZE, &small);
        EXPECT_THROW(stream.Close(), Exception);
        ::setrlimit(RLIMIT_FSIZE, &unlimited);
    }
    EXPECT_EQ(Read(name), "old");
    EXPECT_EQ(Names(), (std::set<std::string>{"picture"}));
}

TEST_F(FileStreamFiles, DirectFlags) {
    const auto write = FileStreamFlags::Write | FileStreamFlags::Create | FileStreamFlags::DeleteWhenEmpty;
    const fs::path name = Write("direct", "long contents");
    {
        FileStream stream(name, write);
        EXPECT_TRUE(stream.Write("abc", 3, nullptr) && stream.Write(nullptr, 0, nullptr));
        EXPECT_FALSE(stream.Write(nullptr, 1, nullptr));
        char byte = 0;
        EXPECT_FALSE(stream.Read(&byte, 1, nullptr)); // not opened for it
        EXPECT_FALSE(stream.Seek(-1, SeekOrigin::Begin, nullptr));
        EXPECT_EQ(stream.GetFileName(), name);
    }
    EXPECT_EQ(Read(name), "abc");
    { FileStream stream(name, write); }
    EXPECT_FALSE(fs::exists(name));
    EXPECT_THROW(FileStream(name, FileStreamFlags::Write), FileNotFoundException);
    Write("direct", "0123456789");
    {
        FileStream stream(name, FileStreamFlags::Read | FileStreamFlags::Write | FileStreamFlags::DeleteOnRelease);
        std::uint64_t position = 0;
        EXPECT_TRUE(stream.Seek(-3, SeekOrigin::End, &position));
        EXPECT_EQ(position, 7U);
        EXPECT_TRUE(stream.SetSize(9));
        char text[8] = {};
        std::uint64_t read = 0;
        EXPECT_TRUE(stream.Read(text, sizeof text, &read));
        EXPECT_EQ(std::string(text, read), "78");
        stream.Close();
        EXPECT_TRUE(fs::exists(name));
        EXPECT_FALSE(stream.Read(text, 1, nullptr));
    }
    EXPECT_FALSE(fs::exists(name));
}

TEST_F(FileStreamFiles, TemporaryFiles) {
    const fs::path source = Write("source", std::string(5000, 's'));
    fs::path name;
    {
        TempFile copy(source, m_folder, "CPY", ".tmp");
        name = copy.GetFilenameRef();
        EXPECT_EQ(Read(name), std::string(5000, 's'));
        EXPECT_EQ(Mode(name), 0600U);
        const std::string head = "CPY" + std::to_string(::getpid() & 0xFFFF) + "_";
        const std::string text = name.filename().string();
        EXPECT_EQ(text.substr(0, head.size()), head);
        EXPECT_EQ(text.size(), head.size() + 4 + 4);
        EXPECT_EQ(text.find_first_not_of("0123456789ABCDEF", head.size()), head.size() + 4);

        copy.Initialize(m_folder, "FIX", "ED", true, true);
        EXPECT_FALSE(fs::exists(name));
        EXPECT_EQ(copy.GetFilenameRef(), m_folder / "FIXED");
        copy.SetDeleteAutomatically(false);
    }
    EXPECT_TRUE(fs::exists(m_folder / "FIXED"));
    const fs::path free = TempFile::GenerateUniqueFilename({}, "IMG", ".tmp");
    EXPECT_EQ(free.parent_path(), fs::temp_directory_path());
    EXPECT_FALSE(fs::exists(free));
    EXPECT_THROW(TempFile({}, nullptr, "", false, true), ArgumentNullPointerException);
    EXPECT_THROW(TempFile(std::string(5000, 'd'), "IMG", "", false, true), ArgumentException);
    EXPECT_THROW(TempFile(m_folder / "none", "IMG", "", false, true), CreateTempFileException);
    EXPECT_THROW(TempFile(m_folder / "none", m_folder, "IMG", ""), FileNotFoundException);
    EXPECT_EQ(Names(), (std::set<std::string>{"FIXED", "source"}));
}

TEST_F(FileStreamFiles, ThreadingSavesToOneTarget) {
    const fs::path name = m_folder / "shared";
    std::vector<std::thread> threads;
    for (char c = 'a'; c < 'e'; ++c) {
        threads.emplace_back([name, c] {
            for (int i = 0; i < 25; ++i) {
                Save(name, std::string(9000, c), true);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    const std::string text = Read(name);
    EXPECT_EQ(text, std::string(9000, text.empty() ? '?' : text[0])); // one of them, whole
    EXPECT_EQ(Names(), (std::set<std::string>{"shared"}));
}

} // namespace
} // namespace ImagingFramework
