// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string_view>

namespace trovarium {

// While it lives, the desktop neither dims nor locks the screen, if it can be asked. Nothing waits for its answer,
// and for a session bus that hangs only half a second.
class IdleInhibition {
public:
    explicit IdleInhibition(std::string_view reason); // which the desktop may show to the user
    ~IdleInhibition();
    IdleInhibition(const IdleInhibition&) = delete;
    IdleInhibition& operator=(const IdleInhibition&) = delete;

private:
    struct Request;
    std::shared_ptr<Request> m_request;
};

} // namespace trovarium
