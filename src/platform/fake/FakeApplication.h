#pragma once

#include "platform/Application.h"

namespace nettlecap {

class FakeApplication final : public Application {
public:
    void beep() override { ++beeps_; }

    int beeps() const { return beeps_; }

private:
    int beeps_ = 0;
};

}  // namespace nettlecap
