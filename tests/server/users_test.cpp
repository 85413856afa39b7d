// Who is let in, and how long that takes.
#include "server/http/users.h"

#include <gtest/gtest.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <string>
#include <vector>

#include "server/http/password_hash.h"
#include "server/model/error.h"
#include "tests/server/temporary_folder.h"

namespace {

using namespace cimserver;

// Ada's password is "secret", Bob's "sesame".
class UsersOfAFile : public testing::Test {
  protected:
    UsersOfAFile() {
        set_user(file, "ada", hash_password("secret"));
        set_user(file, "bob", hash_password("sesame"));
    }
    Users users() {
        return {file, [this](const std::string& line) { warnings.push_back(line); }};
    }

    TemporaryFolder folder;
    std::string file = folder.path("users");
    std::vector<std::string> warnings;
};

// The processor time that this thread takes for it, in seconds, whatever else the machine is doing.
template <typename Work>
double cost_of(const Work& work) {
    const auto now = [] {
        timespec time{};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
    };
    const double before = now();
    work();
    return now() - before;
}

TEST_F(UsersOfAFile, ComeInWithTheirOwnPassword) {
    Users known = users();
    for (int round = 0; round < 2; ++round) { // the second is remembered
        EXPECT_TRUE(known.admit({"ada", "secret"}));
        EXPECT_TRUE(known.admit({"bob", "sesame"}));
        EXPECT_FALSE(known.admit({"ada", "sesame"}));
        EXPECT_FALSE(known.admit({"ada", ""}));
        EXPECT_FALSE(known.admit({"Ada", "secret"}));
        EXPECT_FALSE(known.admit({"eve", "secret"}));
        EXPECT_FALSE(known.admit({"", ""}));
        EXPECT_FALSE(known.admit({"eve", ""}));
    }
    EXPECT_TRUE(warnings.empty());
}

TEST_F(UsersOfAFile, AreHashedOnceAndThenRemembered) {
    Users known = users();
    const double first = cost_of([&] { known.admit({"ada", "secret"}); });
    const double hundredMore = cost_of([&] {
        for (int i = 0; i < 100; ++i) {
            EXPECT_TRUE(known.admit({"ada", "secret"}));
        }
    });
    EXPECT_LT(hundredMore, first * 10);
}

TEST_F(UsersOfAFile, UnknownNamesTakeAsLongAsWrongPasswords) {
    Users known = users();
    const double wrong = cost_of([&] { known.admit({"ada", "wrong"}); });
    const double unknown = cost_of([&] { known.admit({"eve", "wrong"}); });
    EXPECT_GT(unknown, wrong / 3);
    EXPECT_LT(unknown, wrong * 3);
}

TEST_F(UsersOfAFile, WrongPasswordsAreHashedEachTime) {
    Users known = users();
    const double first = cost_of([&] { known.admit({"ada", "wrong"}); });
    const double second = cost_of([&] { known.admit({"ada", "wrong"}); });
    EXPECT_GT(second, first / 3);
}

TEST_F(UsersOfAFile, ANewPasswordHoldsAtOnce) {
    Users known = users();
    EXPECT_TRUE(known.admit({"ada", "secret"}));
    set_user(file, "ada", hash_password("changed"));
    EXPECT_FALSE(known.admit({"ada", "secret"}));
    EXPECT_TRUE(known.admit({"ada", "changed"}));
    EXPECT_TRUE(known.admit({"bob", "sesame"}));
}

TEST_F(UsersOfAFile, AddedAndDeletedOnesAreNoticed) {
    Users known = users();
    EXPECT_TRUE(known.admit({"bob", "sesame"}));
    EXPECT_TRUE(delete_user(file, "bob"));
    EXPECT_FALSE(known.admit({"bob", "sesame"}));
    set_user(file, "eve", hash_password("apple"));
    EXPECT_TRUE(known.admit({"eve", "apple"}));
}

TEST_F(UsersOfAFile, NobodyComesInWhileTheFileIsUnusable) {
    const std::string content = content_of(file);
    Users known = users();
    EXPECT_TRUE(known.admit({"ada", "secret"}));
    folder.write("users", content + "nonsense\n");
    EXPECT_FALSE(known.admit({"ada", "secret"}));
    EXPECT_FALSE(known.admit({"ada", "secret"}));
    EXPECT_EQ(warnings, std::vector<std::string>{"no user is let in: " + file +
                                                 ", line 3: not NAME:HASH with a hash of crypt(3)"});
    unlink(file.c_str());
    EXPECT_FALSE(known.admit({"ada", "secret"}));
    EXPECT_EQ(warnings.size(), 2U);
    folder.write("users", content);
    EXPECT_TRUE(known.admit({"ada", "secret"}));
    EXPECT_EQ(warnings.size(), 2U);
}

TEST_F(UsersOfAFile, NeedAUsableFileFromTheStart) {
    folder.write("users", "nonsense\n");
    EXPECT_THROW(users(), Error);
    unlink(file.c_str());
    EXPECT_THROW(users(), Error);
}

} // namespace
