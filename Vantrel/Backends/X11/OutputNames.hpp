#pragma once

#include <xcb/randr.h>

#include <cstdint>
#include <set>
#include <span>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "Vantrel/Backends/Common/MonitorLayout.hpp"
#include "Vantrel/Backends/X11/X11Connection.hpp"

namespace vantrel::x11 {

/// What the server's outputs and monitor names are called, asked once and kept until an event says that it changed.
class OutputNames {
  public:
    explicit OutputNames(X11Connection& connection) : connection_(connection) {}

    /// The display on an output may be another one now.
    void doubt(xcb_randr_output_t output) { doubted_.insert(output); }
    void doubtAll();

    /// Asks anew about the doubted outputs, without waiting: the answers share the next round trip.
    void askAgain();

    /// Takes the answers to askAgain(), then asks and waits for what is still unknown about these outputs and atoms.
    /// Waits for nothing more than the answers already under way when all is known.
    void learn(std::span<const xcb_randr_output_t> outputs, std::span<const xcb_atom_t> atoms);

    [[nodiscard]] backend::OutputIdentity output(xcb_randr_output_t output) const;
    [[nodiscard]] std::string atom(xcb_atom_t atom) const;

  private:
    struct Question {
        xcb_randr_output_t output;
        xcb_randr_get_output_info_cookie_t info;
        xcb_randr_get_output_property_cookie_t edid;
    };

    void ask(xcb_randr_output_t output);
    void takeAnswers();

    X11Connection& connection_;
    xcb_atom_t edidAtom_ = XCB_ATOM_NONE;
    std::vector<Question> questions_;
    std::set<xcb_randr_output_t> doubted_;
    std::unordered_map<xcb_randr_output_t, backend::OutputIdentity> outputs_;
    std::unordered_map<xcb_atom_t, std::string> atoms_;
};

}  // namespace vantrel::x11
