#include "MisbehavingServer.h"

#include <fmt/core.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <vector>
#include "fakes/TestFiles.h"

namespace thermopix {

namespace {

void run(const std::vector<std::string>& words) {
    std::vector<const char*> pointers;
    for (const auto& word : words) {
        pointers.push_back(word.c_str());
    }
    pointers.push_back(nullptr);
    GErrorSlot error;
    constexpr auto quiet =
        static_cast<GSubprocessFlags>(G_SUBPROCESS_FLAGS_STDOUT_SILENCE | G_SUBPROCESS_FLAGS_STDERR_SILENCE);
    const GObjectHandle<GSubprocess> process(g_subprocess_newv(pointers.data(), quiet, error.out()));
    if (!process || g_subprocess_wait_check(process.get(), nullptr, error.out()) == FALSE) {
        throw std::runtime_error(fmt::format("{}: {}", words.front(), error.message()));
    }
}

void makeCertificate(const std::filesystem::path& certificate, const std::filesystem::path& key,
                     const std::string& name) {
    run({"openssl", "req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:P-256", "-nodes", "-days", "2",
         "-subj", "/CN=Test " + name, "-addext", "subjectAltName=" + name, "-keyout", key, "-out", certificate});
}

std::string address(const char* scheme, int port, const std::string& path) {
    return fmt::format("{}://127.0.0.1:{}{}", scheme, port, path);
}

}  // namespace

MisbehavingServer& MisbehavingServer::instance() {
    static MisbehavingServer server;
    return server;
}

MisbehavingServer::MisbehavingServer() {
    std::string pattern = std::filesystem::temp_directory_path() / "thermopix-server-XXXXXX";
    if (mkdtemp(pattern.data()) == nullptr) {
        throw std::runtime_error("no folder for certificates");
    }
    folder_ = pattern;
    makeCertificate(folder_ / "good.pem", folder_ / "good.key", "IP:127.0.0.1");
    makeCertificate(folder_ / "other.pem", folder_ / "other.key", "DNS:elsewhere.example");
    run({"openssl", "x509", "-in", folder_ / "good.pem", "-signkey", folder_ / "good.key", "-days", "-1", "-out",
         folder_ / "expired.pem"});
    std::ofstream authorities(folder_ / "authorities.pem");
    for (const char* name : {"good.pem", "other.pem", "expired.pem"}) {
        authorities << std::ifstream(folder_ / name).rdbuf();
    }

    GErrorSlot error;
    constexpr auto pipes =
        static_cast<GSubprocessFlags>(G_SUBPROCESS_FLAGS_STDIN_PIPE | G_SUBPROCESS_FLAGS_STDOUT_PIPE);
    process_.reset(g_subprocess_new(
        pipes, error.out(), "python3", testFile("platform/linux/updates/misbehaving_server.py").c_str(),
        (folder_ / "good.pem").c_str(), (folder_ / "good.key").c_str(), (folder_ / "other.pem").c_str(),
        (folder_ / "other.key").c_str(), (folder_ / "expired.pem").c_str(), (folder_ / "good.key").c_str(), nullptr));
    if (!process_) {
        throw std::runtime_error(std::string(error.message()));
    }
    const GObjectHandle<GDataInputStream> output(g_data_input_stream_new(g_subprocess_get_stdout_pipe(process_.get())));
    const GStringHandle line(g_data_input_stream_read_line(output.get(), nullptr, nullptr, error.out()));
    if (!line || !(std::istringstream(line.get()) >> httpPort_ >> httpsPort_ >> otherHostPort_ >> expiredPort_)) {
        throw std::runtime_error("the server did not start");
    }
}

MisbehavingServer::~MisbehavingServer() {
    g_subprocess_force_exit(process_.get());
    g_subprocess_wait(process_.get(), nullptr, nullptr);
    std::error_code error;
    std::filesystem::remove_all(folder_, error);
}

std::string MisbehavingServer::http(const std::string& path) const {
    return address("http", httpPort_, path);
}

std::string MisbehavingServer::https(const std::string& path) const {
    return address("https", httpsPort_, path);
}

std::string MisbehavingServer::httpsOfAnotherHost(const std::string& path) const {
    return address("https", otherHostPort_, path);
}

std::string MisbehavingServer::httpsExpired(const std::string& path) const {
    return address("https", expiredPort_, path);
}

std::string MisbehavingServer::authorities() const {
    return folder_ / "authorities.pem";
}

}  // namespace thermopix
