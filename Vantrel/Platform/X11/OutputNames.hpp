#pragma once

#include <xcb/randr.h>

#include <cstdint>
#include <span>
#include <string>
#include <unordered_map>
#include <vector>

#include "Vantrel/Platform/X11/MonitorLayout.hpp"
#include "Vantrel/Platform/X11/X11Connection.hpp"

namespace vantrel::x11 {

/// What the server's outputs and monitor names are called, asked once and kept until an event says that it changed.
class OutputNames {
  public:
    explicit OutputNames(X11Connection& connection) : connection_(connection) {}

    /// Asks for what is not known yet about these outputs and atoms: one round trip for all, none when all is known.
    void learn(std::span<const xcb_randr_output_t> outputs, std::span<const xcb_atom_t> atoms);

    [[nodiscard]] OutputIdentity output(xcb_randr_output_t output) const;
    [[nodiscard]] std::string atom(xcb_atom_t atom) const;

    /// The display on an output may be another one now.
    void forget(xcb_randr_output_t output) { outputs_.erase(output); }
    void forgetOutputs() { outputs_.clear(); }

  private:
    X11Connection& connection_;
    xcb_atom_t edidAtom_ = XCB_ATOM_NONE;
    std::unordered_map<xcb_randr_output_t, OutputIdentity> outputs_;
    std::unordered_map<xcb_atom_t, std::string> atoms_;
};

}  // namespace vantrel::x11
