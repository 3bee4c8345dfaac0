#include "platform/linux/windows/WindowStage.h"

#include "platform/linux/tray/TestBus.h"

namespace thermopix {

WindowStage::WindowStage() {
    install(WindowStandIns::executable);
    process = std::make_unique<WindowClient>(options(), loop, log);
    events_ = process->onEvent([this](const WindowEvent& event) { events.push_back(event); });
    ends_ = process->onEnd([this](const WindowProcessEnd& end) { ends.push_back(end.failure); });
}

WindowStage::~WindowStage() {
    process.reset();
}

WindowClient::Options WindowStage::options() const {
    return {.program = folder.path() / "thermopix",
            .variables = {{"DISPLAY", ":7"},
                          {"THERMOPIX_WINDOWS", installed().string()},
                          {WindowStandIns::variable, standIns.address()}}};
}

void WindowStage::install(const std::filesystem::path& executable) const {
    uninstall();
    std::filesystem::create_symlink(executable, installed());
}

void WindowStage::uninstall() const {
    std::filesystem::remove(installed());
}

bool WindowStage::until(const std::function<bool()>& condition) {
    return runUntil([&] {
        standIns.poll();
        loop.runPending();
        return condition();
    });
}

std::shared_ptr<WindowStandIn> WindowStage::nextRun() {
    std::shared_ptr<WindowStandIn> run;
    EXPECT_TRUE(until([&] { return (run = standIns.take()) != nullptr; })) << "no window process was started";
    return run;
}

std::shared_ptr<WindowStandIn> WindowStage::nextReadyRun() {
    auto run = nextRun();
    if (run) {
        run->sayHello();
    }
    return run;
}

bool WindowStage::untilRequests(const std::shared_ptr<WindowStandIn>& run, std::size_t count) {
    const bool came = until([&] { return run->requests.size() >= count; });
    EXPECT_EQ(run->requests.size(), count);
    return came && run->requests.size() == count;
}

bool WindowStage::settle(const std::shared_ptr<WindowStandIn>& run) {
    // Requests are read in order, and this one means nothing to the tests.
    const WindowRequest mark = UseActivationToken{"mark " + std::to_string(run->requests.size())};
    process->send(mark);
    const bool came = until([&] { return !run->requests.empty() && run->requests.back() == mark; });
    if (came) {
        run->requests.pop_back();
    }
    return came;
}

}  // namespace thermopix
