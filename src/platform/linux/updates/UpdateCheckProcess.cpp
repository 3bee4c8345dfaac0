#include "platform/linux/updates/UpdateCheckProcess.h"

#include <gio/gio.h>

#include <array>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>

#include "platform/linux/glib/GLibHandles.h"

namespace thermopix {

namespace {

/// More than any verdict needs.
constexpr std::size_t maximumOutput = 16384;

/// One run of the program, from its start until its output has ended and its owner has heard of it.
class Run : public std::enable_shared_from_this<Run> {
public:
    using Concluded = std::function<void(const UpdateVerdict&)>;

    explicit Run(Concluded concluded) : concluded_(std::move(concluded)), cancellable_(g_cancellable_new()) {}
    ~Run() { endProcess(); }
    Run(const Run&) = delete;
    Run& operator=(const Run&) = delete;

    void start(MainLoop& mainLoop, const std::vector<std::string>& command, MainLoop::Duration patience) {
        std::vector<const char*> words;
        words.reserve(command.size() + 1);
        for (const auto& word : command) {
            words.push_back(word.c_str());
        }
        words.push_back(nullptr);
        GErrorSlot error;
        process_.reset(g_subprocess_newv(words.data(), G_SUBPROCESS_FLAGS_STDOUT_PIPE, error.out()));
        if (!process_) {
            // Told later, like every verdict.
            patience_ = mainLoop.oneShot(MainLoop::Duration::zero(), [this, detail = std::string(error.message())] {
                conclude(CheckFailed{CheckFailure::unavailable, detail});
            });
            return;
        }
        patience_ = mainLoop.oneShot(patience, [this] {
            conclude(CheckFailed{CheckFailure::tooSlow, "the check did not end"});
        });
        g_input_stream_read_all_async(g_subprocess_get_stdout_pipe(process_.get()), output_.data(), output_.size(),
                                      G_PRIORITY_DEFAULT, cancellable_.get(), &finishReading,
                                      new std::shared_ptr<Run>(shared_from_this()));
    }

    /// Ends the run unheard.
    void abandon() {
        concluded_ = nullptr;
        patience_.cancel();
        g_cancellable_cancel(cancellable_.get());
        endProcess();
    }

private:
    static void finishReading(GObject* stream, GAsyncResult* result, gpointer data) {
        const std::unique_ptr<std::shared_ptr<Run>> run(static_cast<std::shared_ptr<Run>*>(data));
        gsize count = 0;
        GErrorSlot error;
        g_input_stream_read_all_finish(G_INPUT_STREAM(stream), result, &count, error.out());
        (*run)->outputEnded(count);
    }

    void outputEnded(std::size_t count) {
        const std::string_view output(output_.data(), count);
        const auto end = output.find('\n');
        const auto verdict =
            end != std::string_view::npos && end + 1 == count ? verdictFromLine(output.substr(0, end)) : std::nullopt;
        conclude(verdict.value_or(CheckFailed{CheckFailure::unavailable, "the check ended without a verdict"}));
    }

    void conclude(const UpdateVerdict& verdict) {
        const auto held = shared_from_this();
        const auto concluded = std::exchange(concluded_, nullptr);
        abandon();
        if (concluded) {
            concluded(verdict);
        }
    }

    /// The library reaps it.
    void endProcess() {
        if (process_) {
            g_subprocess_force_exit(process_.get());
            process_.reset();
        }
    }

    Concluded concluded_;
    GObjectHandle<GCancellable> cancellable_;
    GObjectHandle<GSubprocess> process_;
    Subscription patience_;
    std::array<char, maximumOutput> output_{};
};

}  // namespace

Subscription UpdateCheckProcess::check(std::function<void(const UpdateVerdict&)> concluded) {
    auto run = std::make_shared<Run>(std::move(concluded));
    run->start(mainLoop_, command_, patience_);
    return Subscription([run] { run->abandon(); });
}

}  // namespace thermopix
