#include "Vantrel/Backends/X11/OutputNames.hpp"

#include <utility>

#include "Vantrel/Backends/Common/DisplayIdentity.hpp"

namespace vantrel::x11 {

namespace {

constexpr std::uint32_t edidLengthInWords = 32;  // the base block, 128 bytes

}  // namespace

void OutputNames::ask(xcb_randr_output_t output) {
    if (edidAtom_ == XCB_ATOM_NONE) {
        edidAtom_ = connection_.atom("EDID");
    }
    questions_.push_back({output, xcb_randr_get_output_info(connection_.get(), output, XCB_CURRENT_TIME),
                          xcb_randr_get_output_property(connection_.get(), output, edidAtom_, XCB_ATOM_ANY, 0,
                                                        edidLengthInWords, 0, 0)});
}

void OutputNames::askAgain() {
    for (const auto& [output, identity] : outputs_) {
        ask(output);
    }
}

void OutputNames::takeAnswers() {
    for (const Question& question : std::exchange(questions_, {})) {
        const auto info = adopt(xcb_randr_get_output_info_reply(connection_.get(), question.info, nullptr));
        const auto edid = adopt(xcb_randr_get_output_property_reply(connection_.get(), question.edid, nullptr));
        if (!info) {
            outputs_.erase(question.output);  // the output itself is gone
            continue;
        }
        backend::OutputIdentity& identity = outputs_[question.output];
        const auto* name = xcb_randr_get_output_info_name(info.get());
        identity.connector.assign(name, name + xcb_randr_get_output_info_name_length(info.get()));
        identity.edid.clear();
        if (edid) {
            const auto length = static_cast<std::size_t>(xcb_randr_get_output_property_data_length(edid.get()));
            identity.edid = backend::edidIdentity({xcb_randr_get_output_property_data(edid.get()), length});
        }
    }
}

void OutputNames::learn(std::span<const xcb_randr_output_t> outputs, std::span<const xcb_atom_t> atoms) {
    takeAnswers();
    for (const xcb_randr_output_t output : outputs) {
        if (!outputs_.contains(output)) {
            ask(output);
        }
    }
    std::vector<std::pair<xcb_atom_t, xcb_get_atom_name_cookie_t>> atomQuestions;
    for (const xcb_atom_t atom : atoms) {
        if (!atoms_.contains(atom)) {
            atomQuestions.emplace_back(atom, xcb_get_atom_name(connection_.get(), atom));
        }
    }
    takeAnswers();
    for (const auto& [atom, cookie] : atomQuestions) {
        if (const auto name = adopt(xcb_get_atom_name_reply(connection_.get(), cookie, nullptr))) {
            atoms_[atom].assign(xcb_get_atom_name_name(name.get()),
                                static_cast<std::size_t>(xcb_get_atom_name_name_length(name.get())));
        }
    }
}

backend::OutputIdentity OutputNames::output(xcb_randr_output_t output) const {
    const auto known = outputs_.find(output);
    return known == outputs_.end() ? backend::OutputIdentity{} : known->second;
}

std::string OutputNames::atom(xcb_atom_t atom) const {
    const auto known = atoms_.find(atom);
    return known == atoms_.end() ? std::string{} : known->second;
}

}  // namespace vantrel::x11
