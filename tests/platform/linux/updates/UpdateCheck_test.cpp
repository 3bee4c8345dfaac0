// The check's program as it is installed, against a server that misbehaves.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "MisbehavingServer.h"
#include "updates/UpdateVerdict.h"

namespace thermopix {
namespace {

using Words = std::vector<std::string>;

struct Outcome {
    int status = -1;
    std::string output;
    std::string errors;
};

Outcome runCheck(const Words& arguments) {
    std::vector<const char*> words{THERMOPIX_UPDATE_CHECK};
    for (const auto& argument : arguments) {
        words.push_back(argument.c_str());
    }
    words.push_back(nullptr);
    constexpr auto pipes =
        static_cast<GSubprocessFlags>(G_SUBPROCESS_FLAGS_STDOUT_PIPE | G_SUBPROCESS_FLAGS_STDERR_PIPE);
    const GObjectHandle<GSubprocessLauncher> launcher(g_subprocess_launcher_new(pipes));
    // Nothing between the program and the server.
    g_subprocess_launcher_setenv(launcher.get(), "no_proxy", "*", TRUE);
    GErrorSlot error;
    const GObjectHandle<GSubprocess> process(g_subprocess_launcher_spawnv(launcher.get(), words.data(), error.out()));
    char* output = nullptr;
    char* errors = nullptr;
    if (!process ||
        g_subprocess_communicate_utf8(process.get(), nullptr, nullptr, &output, &errors, error.out()) == FALSE) {
        ADD_FAILURE() << error.message();
        return {};
    }
    const GStringHandle heldOutput(output);
    const GStringHandle heldErrors(errors);
    return {g_subprocess_get_if_exited(process.get()) != FALSE ? g_subprocess_get_exit_status(process.get()) : -1,
            output, errors};
}

UpdateVerdict verdictOf(const std::string& feed, const Words& options = {}) {
    Words arguments{"--feed", feed, "--version", "1.9", "--build", "400"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    const auto outcome = runCheck(arguments);
    EXPECT_EQ(outcome.status, 0) << feed;
    EXPECT_EQ(outcome.errors, "") << feed;
    const auto end = outcome.output.find('\n');
    EXPECT_EQ(end + 1, outcome.output.size()) << "one line: " << outcome.output;
    const auto verdict = verdictFromLine(outcome.output.substr(0, end));
    EXPECT_TRUE(verdict) << outcome.output;
    return verdict.value_or(UpToDate());
}

void expectFailure(CheckFailure expected, const std::string& feed, const Words& options = {}) {
    const auto verdict = verdictOf(feed, options);
    const auto* failed = std::get_if<CheckFailed>(&verdict);
    ASSERT_NE(failed, nullptr) << feed << ": " << verdictLine(verdict);
    EXPECT_EQ(rawValue(failed->failure), rawValue(expected)) << feed << ": " << failed->detail;
    EXPECT_NE(failed->detail, "");
}

const UpdateVerdict update = UpdateAvailable{"1.10", "https://example.org/releases/1.10", false};
const Words shortTime{"--milliseconds", "300"};

class UpdateCheck : public ::testing::Test {
protected:
    const MisbehavingServer& server = MisbehavingServer::instance();
    const Words trusting{"--authorities", server.authorities()};
};

TEST_F(UpdateCheck, aFeedOverHttpsIsJudged) {
    EXPECT_EQ(verdictOf(server.https("/feed"), trusting), update);
}

TEST_F(UpdateCheck, thisMachineIsTrustedWithoutEncryption) {
    EXPECT_EQ(verdictOf(server.http("/feed")), update);
}

TEST_F(UpdateCheck, theVersionThatAsksDecides) {
    const auto outcome = runCheck({"--feed", server.http("/feed"), "--version", "1.10"});
    EXPECT_EQ(outcome.output, "{\"verdict\":\"upToDate\"}\n");
}

TEST_F(UpdateCheck, theDeclaredTypeDoesNotMatter) {
    EXPECT_EQ(verdictOf(server.http("/feed-as-html")), update);
}

TEST_F(UpdateCheck, aCertificateOfNobodyKnownIsAFailure) {
    expectFailure(CheckFailure::insecure, server.https("/feed"));
}

TEST_F(UpdateCheck, aCertificateForAnotherHostIsAFailure) {
    expectFailure(CheckFailure::insecure, server.httpsOfAnotherHost("/feed"), trusting);
}

TEST_F(UpdateCheck, aCertificateThatHasExpiredIsAFailure) {
    expectFailure(CheckFailure::insecure, server.httpsExpired("/feed"), trusting);
}

TEST_F(UpdateCheck, authoritiesThatCannotBeReadAreAFailure) {
    expectFailure(CheckFailure::insecure, server.https("/feed"), {"--authorities", "/nonexistent.pem"});
}

TEST_F(UpdateCheck, otherAddressesAreNotEvenAsked) {
    for (const auto* address : {"http://192.0.2.1/feed", "http://localhost/feed", "http://127.0.0.1.example.org/",
                                "http://127.0.0.1@example.org/", "ftp://127.0.0.1/feed", "file:///etc/passwd",
                                "gopher://127.0.0.1/", "feed.xml", "https://", " "}) {
        expectFailure(CheckFailure::insecure, address);
    }
}

TEST_F(UpdateCheck, redirectsAreFollowedToTheirEnd) {
    EXPECT_EQ(verdictOf(server.https("/hops?5"), trusting), update);
    EXPECT_EQ(verdictOf(server.http("/to?" + server.https("/feed")), trusting), update);
}

TEST_F(UpdateCheck, redirectsWithoutAnEndAreAFailure) {
    expectFailure(CheckFailure::refused, server.https("/hops?6"), trusting);
    expectFailure(CheckFailure::refused, server.http("/loop"));
}

TEST_F(UpdateCheck, aRedirectNeverLeavesEncryption) {
    expectFailure(CheckFailure::insecure, server.https("/to?" + server.http("/feed")), trusting);
    expectFailure(CheckFailure::insecure, server.http("/to?" + server.https("/to?" + server.http("/feed"))), trusting);
}

TEST_F(UpdateCheck, aRedirectElsewhereWithoutEncryptionIsNotFollowed) {
    expectFailure(CheckFailure::insecure, server.http("/to?http://192.0.2.1/feed"));
    expectFailure(CheckFailure::insecure, server.http("/to?file:///etc/passwd"));
}

TEST_F(UpdateCheck, aRedirectToABadCertificateIsAFailure) {
    expectFailure(CheckFailure::insecure, server.https("/to?" + server.httpsExpired("/feed")), trusting);
}

TEST_F(UpdateCheck, everyStatusButOneIsARefusal) {
    for (const auto* status : {"201", "206", "304", "401", "403", "404", "410", "429", "500", "503"}) {
        expectFailure(CheckFailure::refused, server.http(std::string("/status?") + status));
    }
}

TEST_F(UpdateCheck, aDocumentThatIsNoFeedIsUnreadable) {
    for (const auto* path : {"/garbage", "/cut-short", "/empty", "/html", "/json"}) {
        expectFailure(CheckFailure::unreadable, server.http(path));
    }
}

TEST_F(UpdateCheck, entitiesAreNeverExpanded) {
    expectFailure(CheckFailure::unreadable, server.http("/bomb"));
    expectFailure(CheckFailure::unreadable, server.http("/external"));
}

TEST_F(UpdateCheck, aDocumentWithoutAnEndIsTooLarge) {
    expectFailure(CheckFailure::tooLarge, server.http("/endless"));
    expectFailure(CheckFailure::tooLarge, server.http("/declared"));
    expectFailure(CheckFailure::tooLarge, server.http("/feed"), {"--bytes", "100"});
}

TEST_F(UpdateCheck, headersWithoutAnEndAreTooLarge) {
    expectFailure(CheckFailure::tooLarge, server.http("/headers"), {"--bytes", "65536"});
}

TEST_F(UpdateCheck, aServerThatTakesItsTimeIsTooSlow) {
    expectFailure(CheckFailure::tooSlow, server.http("/drip"), shortTime);
    expectFailure(CheckFailure::tooSlow, server.http("/silence"), shortTime);
}

TEST_F(UpdateCheck, redirectsShareTheTime) {
    expectFailure(CheckFailure::tooSlow, server.http("/to?" + server.http("/to?" + server.http("/drip"))), shortTime);
}

TEST_F(UpdateCheck, aConnectionThatBreaksIsUnreachable) {
    for (const auto* path : {"/hang-up", "/truncated"}) {
        expectFailure(CheckFailure::unreachable, server.http(path));
    }
}

TEST_F(UpdateCheck, aServerThatDoesNotSpeakHttpIsARefusal) {
    expectFailure(CheckFailure::refused, server.http("/nonsense"));
}

TEST_F(UpdateCheck, aPortThatNobodyListensAtIsUnreachable) {
    // Taken and let go of again.
    const GObjectHandle<GSocketListener> listener(g_socket_listener_new());
    const guint16 port = g_socket_listener_add_any_inet_port(listener.get(), nullptr, nullptr);
    ASSERT_NE(port, 0);
    g_socket_listener_close(listener.get());
    // Both are this machine, so they are asked.
    for (const std::string host : {"127.0.0.1", "[::1]"}) {
        expectFailure(CheckFailure::unreachable, "http://" + host + ":" + std::to_string(port) + "/feed");
    }
}

TEST_F(UpdateCheck, aSystemThatIsTooOldIsNotOfferedTheRelease) {
    const UpdateVerdict none = UpToDate();
    EXPECT_EQ(verdictOf(server.http("/for-a-newer-system")), none) << "for the kernel that runs";
    EXPECT_EQ(verdictOf(server.http("/for-a-newer-system"), {"--system-version", "99"}), none);
    EXPECT_EQ(verdictOf(server.http("/for-a-newer-system"), {"--system-version", "99.1.3-arch1"}), update);
}

TEST(UpdateCheckUsage, wrongArgumentsAreSaidSo) {
    for (const auto& arguments :
         {Words{}, Words{"--feed", "https://example.org"}, Words{"--version", "1.0"}, Words{"--feed"},
          Words{"--feed", "https://example.org", "--version", "1.0", "--color", "red"},
          Words{"--feed", "https://example.org", "--version", "1.0", "--bytes", "0"},
          Words{"--feed", "https://example.org", "--version", "1.0", "--bytes", "-1"},
          Words{"--feed", "https://example.org", "--version", "1.0", "--milliseconds", "soon"}}) {
        const auto outcome = runCheck(arguments);
        EXPECT_EQ(outcome.status, 2);
        EXPECT_EQ(outcome.output, "");
        EXPECT_EQ(outcome.errors.rfind("usage: thermopix-update-check ", 0), 0U) << outcome.errors;
    }
}

}  // namespace
}  // namespace thermopix
