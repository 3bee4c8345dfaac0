#pragma once

/// What the stand-in for NVIDIA's management library answers and what it was asked; one per process.
struct NvmlStandIn {
    int initialisations = 0;
    int shutdowns = 0;
    int lookups = 0;
    int readings = 0;
    bool initialises = true;
    bool answers = true;
    unsigned celsius = 55;
    char lastAddress[32] = "";
};
