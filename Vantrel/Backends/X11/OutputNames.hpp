#pragma once

#include <xcb/randr.h>

#include <span>
#include <string>
#include <unordered_map>
#include <vector>

#include "Vantrel/Backends/Common/MonitorLayout.hpp"
#include "Vantrel/Backends/X11/X11Connection.hpp"

namespace vantrel::x11 {

/// What the server's outputs and monitor names are called, kept so that they need not be waited for when the
/// layout changes.
class OutputNames {
  public:
    explicit OutputNames(X11Connection& connection) : connection_(connection) {}

    /// Asks anew about the outputs, which may have other displays now, without waiting: the answers share the next
    /// round trip.
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
    std::unordered_map<xcb_randr_output_t, backend::OutputIdentity> outputs_;
    std::unordered_map<xcb_atom_t, std::string> atoms_;
};

}  // namespace vantrel::x11
