#include "platform/linux/x11/X11Atoms.h"

#include "platform/linux/x11/X11Connection.h"

#include <unordered_set>

namespace nettlecap {

namespace {

xcb_intern_atom_cookie_t ask(xcb_connection_t* xcb, std::string_view name) {
    return xcb_intern_atom(xcb, 0, static_cast<std::uint16_t>(name.size()), name.data());
}

}  // namespace

/// One call of names(): kept alive by the requests under way.
struct X11Atoms::Question {
    std::vector<xcb_atom_t> atoms;
    std::size_t missing = 0;
    std::function<void(Names)> handler;

    void answer(const std::unordered_map<xcb_atom_t, std::string>& known) const {
        Names result;
        result.reserve(atoms.size());
        for (const xcb_atom_t atom : atoms) {
            const auto found = known.find(atom);
            result.push_back(found == known.end() ? std::nullopt : std::optional(found->second));
        }
        handler(std::move(result));
    }
};

void X11Atoms::prefetch(std::span<const std::string_view> names) {
    std::vector<std::pair<std::string_view, xcb_intern_atom_cookie_t>> asked;
    for (const std::string_view name : names)
        if (!atoms_.contains(std::string(name))) asked.emplace_back(name, ask(connection_.xcb(), name));
    for (const auto& [name, cookie] : asked) {
        const X11Reply<xcb_intern_atom_reply_t> reply(
            xcb_intern_atom_reply(connection_.xcb(), cookie, nullptr));
        if (reply) remember(reply->atom, name);
    }
}

xcb_atom_t X11Atoms::of(std::string_view name) {
    prefetch({&name, 1});
    const auto found = atoms_.find(std::string(name));
    return found == atoms_.end() ? static_cast<xcb_atom_t>(XCB_ATOM_NONE) : found->second;
}

void X11Atoms::names(std::vector<xcb_atom_t> atoms, std::function<void(Names)> handler) {
    auto question = std::make_shared<Question>();
    question->atoms = std::move(atoms);
    question->handler = std::move(handler);
    // In the order of asking: xcb looks through all replies before the one that is taken.
    std::vector<std::pair<xcb_atom_t, unsigned>> asked;
    std::unordered_set<xcb_atom_t> seen;
    for (const xcb_atom_t atom : question->atoms)
        if (!names_.contains(atom) && seen.insert(atom).second)
            asked.emplace_back(atom, xcb_get_atom_name(connection_.xcb(), atom).sequence);
    question->missing = asked.size();
    if (asked.empty()) return question->answer(names_);
    for (const auto& [atom, sequence] : asked) {
        connection_.await<xcb_get_atom_name_reply_t>(
            sequence, [this, question, atom = atom](const xcb_get_atom_name_reply_t* reply) {
                if (reply) {
                    const auto length = static_cast<std::size_t>(xcb_get_atom_name_name_length(reply));
                    remember(atom, {xcb_get_atom_name_name(reply), length});
                }
                if (--question->missing == 0) question->answer(names_);
            });
    }
}

void X11Atoms::remember(xcb_atom_t atom, std::string_view name) {
    atoms_.emplace(name, atom);
    names_.emplace(atom, name);
}

}  // namespace nettlecap
