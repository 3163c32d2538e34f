#pragma once

#include "Vantrel/Platform/Application.hpp"
#include "tests/fakes/Journal.hpp"

namespace vantrel::fake {

/// A process that only notes what is asked of it.
class FakeApplication final : public Application {
  public:
    explicit FakeApplication(Journal& journal) : journal_(journal) {}

    void setActivationPolicy(ActivationPolicy policy) override {
        journal_.push_back("setActivationPolicy(" + std::to_string(static_cast<int>(policy)) + ")");
    }
    void activate(bool ignoringOtherApps) override {
        journal_.emplace_back(ignoringOtherApps ? "activate(ignoringOtherApps)" : "activate");
    }
    void terminate() override { journal_.emplace_back("terminate"); }

  private:
    Journal& journal_;
};

}  // namespace vantrel::fake
