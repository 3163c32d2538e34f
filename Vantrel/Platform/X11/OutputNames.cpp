#include "Vantrel/Platform/X11/OutputNames.hpp"

#include <utility>

namespace vantrel::x11 {

namespace {

constexpr std::uint32_t edidLengthInWords = 32;  // the base block, 128 bytes

struct OutputQuestion {
    xcb_randr_output_t output;
    xcb_randr_get_output_info_cookie_t info;
    xcb_randr_get_output_property_cookie_t edid;
};

OutputIdentity answer(xcb_connection_t* connection, const OutputQuestion& question) {
    OutputIdentity identity;
    if (const auto info = adopt(xcb_randr_get_output_info_reply(connection, question.info, nullptr))) {
        const auto* name = xcb_randr_get_output_info_name(info.get());
        const auto length = static_cast<std::size_t>(xcb_randr_get_output_info_name_length(info.get()));
        identity.connector.assign(name, name + length);
    }
    if (const auto edid = adopt(xcb_randr_get_output_property_reply(connection, question.edid, nullptr))) {
        const auto length = static_cast<std::size_t>(xcb_randr_get_output_property_data_length(edid.get()));
        identity.edid = edidIdentity({xcb_randr_get_output_property_data(edid.get()), length});
    }
    return identity;
}

}  // namespace

void OutputNames::learn(std::span<const xcb_randr_output_t> outputs, std::span<const xcb_atom_t> atoms) {
    xcb_connection_t* connection = connection_.get();
    if (edidAtom_ == XCB_ATOM_NONE) {
        edidAtom_ = connection_.atom("EDID");
    }
    std::vector<OutputQuestion> outputQuestions;
    for (const xcb_randr_output_t output : outputs) {
        if (!outputs_.contains(output)) {
            outputQuestions.push_back({output, xcb_randr_get_output_info(connection, output, XCB_CURRENT_TIME),
                                       xcb_randr_get_output_property(connection, output, edidAtom_, XCB_ATOM_ANY, 0,
                                                                     edidLengthInWords, 0, 0)});
        }
    }
    std::vector<std::pair<xcb_atom_t, xcb_get_atom_name_cookie_t>> atomQuestions;
    for (const xcb_atom_t atom : atoms) {
        if (!atoms_.contains(atom)) {
            atomQuestions.emplace_back(atom, xcb_get_atom_name(connection, atom));
        }
    }
    for (const OutputQuestion& question : outputQuestions) {
        outputs_[question.output] = answer(connection, question);
    }
    for (const auto& [atom, cookie] : atomQuestions) {
        if (const auto name = adopt(xcb_get_atom_name_reply(connection, cookie, nullptr))) {
            atoms_[atom].assign(xcb_get_atom_name_name(name.get()),
                                static_cast<std::size_t>(xcb_get_atom_name_name_length(name.get())));
        }
    }
}

OutputIdentity OutputNames::output(xcb_randr_output_t output) const {
    const auto known = outputs_.find(output);
    return known == outputs_.end() ? OutputIdentity{} : known->second;
}

std::string OutputNames::atom(xcb_atom_t atom) const {
    const auto known = atoms_.find(atom);
    return known == atoms_.end() ? std::string{} : known->second;
}

}  // namespace vantrel::x11
