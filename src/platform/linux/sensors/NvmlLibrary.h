#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace thermopix {

/// NVIDIA's management library, looked up at run time and initialised only while a card is being read. A session ends
/// as soon as no card uses it any more: a card drops out when it is asleep, and all drop out when some other sensor
/// has been read twice without any card having been read in between, which means that a whole poll wanted none.
class NvmlLibrary {
public:
    /// One card's part in the current session.
    class Use {
        friend class NvmlLibrary;
        std::uint64_t session_ = 0;
        void* device_ = nullptr;
    };

    /// Null when the library or one of its functions is missing.
    [[nodiscard]] static std::unique_ptr<NvmlLibrary> load(const std::string& name);
    ~NvmlLibrary();
    NvmlLibrary(const NvmlLibrary&) = delete;
    NvmlLibrary& operator=(const NvmlLibrary&) = delete;

    /// Degrees Celsius of the card at a PCI address, with a session begun if there is none. A library that cannot be
    /// initialised is not tried again.
    [[nodiscard]] std::optional<double> read(Use& use, const char* pciAddress);

    /// The card takes no part in the session any more.
    void drop(Use& use);

    /// Another sensor is being read; `lastSeen` is that sensor's own memory, zero at first.
    void noteOtherReading(std::uint64_t& lastSeen);

private:
    struct Functions {
        int (*initialise)();
        int (*shutDown)();
        int (*deviceByPciAddress)(const char* address, void** device);
        int (*temperature)(void* device, int sensor, unsigned* celsius);
    };

    NvmlLibrary(void* library, const Functions& functions) : library_(library), functions_(functions) {}
    [[nodiscard]] bool join(Use& use);
    void endSession();

    void* library_;
    Functions functions_;
    bool isBroken_ = false;
    bool isRunning_ = false;
    int users_ = 0;
    /// The current session's number; a use of an earlier one is over.
    std::uint64_t session_ = 1;
    /// Counts the readings of cards.
    std::uint64_t readings_ = 1;
};

}  // namespace thermopix
