#pragma once
/* The device store on the fake platform, with an empty table for each test. */

#include <algorithm>
#include <cstdio>
#include <gmock/gmock.h>
#include <iterator>
#include <string>

#include "fake_platform.h"
#include "vesk/device_table.h"

class StoreTest : public testing::Test {
protected:
    StoreTest()
    {
        fake::reset();
        std::fill(std::begin(gVeskTable), std::end(gVeskTable), DeviceEntry{});
        device_count = -1;
    }
};

inline DeviceEntry row(const std::string &name, uint32_t state)
{
    DeviceEntry entry{};
    snprintf(entry.name, sizeof entry.name, "%s", name.c_str());
    entry.state = state;
    return entry;
}
