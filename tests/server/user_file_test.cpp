// The file of users, and the hashes in it.
#include "server/http/user_file.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <string>

#include "server/http/password_hash.h"
#include "server/model/error.h"
#include "tests/server/temporary_folder.h"

namespace {

using namespace cimserver;

const std::string HASH = "$y$j9T$eXY3QHn2KK4QzNibm2pvX.$FDvacQ9dwGoA9RVTDbCuPyFNZ.mCKI3hH8czhzAaCS3";

std::string fault_of(const std::string& file) {
    try {
        read_user_file(file);
        return "none";
    } catch (const Error& error) {
        return error.what();
    }
}

mode_t mode_of(const std::string& file) {
    struct stat status {};
    return stat(file.c_str(), &status) == 0 ? status.st_mode & 0777U : 0;
}

TEST(PasswordHash, MatchesItsPasswordOnly) {
    const std::string hash = hash_password("a long secret");
    EXPECT_TRUE(hash.starts_with("$y$")) << hash;
    EXPECT_TRUE(password_matches("a long secret", hash));
    EXPECT_FALSE(password_matches("a long secre", hash));
    EXPECT_FALSE(password_matches("", hash));
}

TEST(PasswordHash, IsSalted) {
    EXPECT_NE(hash_password("secret"), hash_password("secret"));
}

TEST(PasswordHash, NothingMatchesWhatIsNoHash) {
    for (const char* hash : {"", "*", "secret", "$y$j9T$", "$9$abc"}) {
        EXPECT_FALSE(password_matches("secret", hash)) << hash;
    }
}

TEST(PasswordHash, HasALongestPassword) {
    EXPECT_NO_THROW(hash_password(std::string(511, 'x')));
    EXPECT_THROW(hash_password(std::string(512, 'x')), Error);
}

TEST(UserFile, HasALineForEachUser) {
    const TemporaryFolder folder;
    const std::string file =
        folder.write("users", "# who may\n\nada:" + HASH + "\nGrace Hopper:" + HASH + "\n");
    EXPECT_EQ(read_user_file(file), (UserHashes{{"Grace Hopper", HASH}, {"ada", HASH}}));
}

TEST(UserFile, FaultsAreNamedByTheirLine) {
    const TemporaryFolder folder;
    const std::string lines[] = {"ada",
                                 "ada:",
                                 "ada:secret",
                                 ":" + HASH,
                                 " ada:" + HASH,
                                 "ada:ab1234567890.",
                                 "ada:" + HASH + ":more",
                                 "ada:*"};
    for (const std::string& line : lines) {
        const std::string file = folder.write("users", "bob:" + HASH + "\n" + line + "\n");
        EXPECT_EQ(fault_of(file), file + ", line 2: not NAME:HASH with a hash of crypt(3)") << line;
    }
    const std::string file = folder.write("users", "ada:" + HASH + "\nada:" + HASH + "\n");
    EXPECT_EQ(fault_of(file), file + ", line 2: ada once more");
}

TEST(UserFile, MustBeThere) {
    const TemporaryFolder folder;
    EXPECT_EQ(fault_of(folder.path("users")),
              "cannot read " + folder.path("users") + ": No such file or directory");
    EXPECT_EQ(fault_of(folder.path("")), "cannot read " + folder.path("") + ": Is a directory");
}

TEST(UserFile, IsNobodyElsesBusiness) {
    const TemporaryFolder folder;
    for (const mode_t mode : {0644U, 0606U, 0601U, 0660U}) {
        const std::string file = folder.write("users", "ada:" + HASH + "\n", mode);
        EXPECT_EQ(fault_of(file), file + " is open to others; chmod 600 or 640 keeps its secrets");
    }
    EXPECT_EQ(fault_of(folder.write("users", "ada:" + HASH + "\n", 0640)), "none");
}

TEST(UserFile, IsMadeForItsFirstUser) {
    const TemporaryFolder folder;
    const std::string file = folder.path("users");
    set_user(file, "ada", HASH);
    EXPECT_EQ(content_of(file), "ada:" + HASH + "\n");
    EXPECT_EQ(mode_of(file), 0600U);
}

TEST(UserFile, ChangesOneUserAndKeepsTheRest) {
    const TemporaryFolder folder;
    const std::string other = hash_password("other");
    const std::string file = folder.write("users", "# who may\nada:" + HASH + "\nbob:" + HASH + "\n");
    set_user(file, "ada", other);
    EXPECT_EQ(content_of(file), "# who may\nbob:" + HASH + "\nada:" + other + "\n");
    EXPECT_TRUE(delete_user(file, "bob"));
    EXPECT_EQ(content_of(file), "# who may\nada:" + other + "\n");
    EXPECT_FALSE(delete_user(file, "bob"));
    EXPECT_EQ(content_of(file), "# who may\nada:" + other + "\n");
}

TEST(UserFile, KeepsItsPermissions) {
    const TemporaryFolder folder;
    const std::string file = folder.write("users", "ada:" + HASH + "\n", 0640);
    set_user(file, "bob", HASH);
    EXPECT_EQ(mode_of(file), 0640U);
}

// The server's own user has to be able to read what root has changed.
TEST(UserFile, KeepsItsOwner) {
    if (geteuid() != 0) GTEST_SKIP() << "only root can give a file away";
    constexpr uid_t SOMEBODY = 4711;
    const TemporaryFolder folder;
    const std::string file = folder.write("users", "ada:" + HASH + "\n");
    ASSERT_EQ(chown(file.c_str(), SOMEBODY, SOMEBODY), 0);
    set_user(file, "bob", HASH);
    struct stat status {};
    ASSERT_EQ(stat(file.c_str(), &status), 0);
    EXPECT_EQ(status.st_uid, SOMEBODY);
    EXPECT_EQ(status.st_gid, SOMEBODY);
}

TEST(UserFile, HasOneWriterAtATime) {
    const TemporaryFolder folder;
    const std::string file = folder.write("users", "ada:" + HASH + "\n");
    folder.write("users.new", "of another writer");
    EXPECT_THROW(set_user(file, "bob", HASH), Error);
    EXPECT_EQ(content_of(folder.path("users.new")), "of another writer");
    EXPECT_EQ(content_of(file), "ada:" + HASH + "\n");
}

TEST(UserFile, AFailedChangeLeavesNothing) {
    const TemporaryFolder folder;
    const std::string file = folder.write("users", "nonsense\n");
    EXPECT_THROW(set_user(file, "ada", HASH), Error);
    EXPECT_THROW(delete_user(file, "ada"), Error);
    EXPECT_EQ(content_of(file), "nonsense\n");
    EXPECT_NE(access(folder.path("users.new").c_str(), F_OK), 0);
}

TEST(UserFile, TakesNoNameThatALineCannotHold) {
    const TemporaryFolder folder;
    for (const char* name : {"", "a:b", "#ada", " ada", "ada ", "a\nb", "a\x7f"}) {
        EXPECT_THROW(set_user(folder.path("users"), name, HASH), Error) << name;
    }
    EXPECT_NE(access(folder.path("users").c_str(), F_OK), 0);
}

} // namespace
