#include "platform/toolkit/Event.h"

#include "platform/qt/toolkit/DesktopState.h"
#include "platform/toolkit/Form.h"
#include "runtime/Failure.h"

#include <exception>
#include <iostream>
#include <string>
#include <string_view>

namespace trovarium {

namespace {

void report(Component& sender, std::string_view description)
{
    Form& form = sender.form();
    const std::string name = &sender == &form ? form.Name() : form.Name() + "." + sender.Name();
    std::cerr << name + ": " + std::string(description) + "\n" << std::flush;
}

} // namespace

void runHandler(Component& sender, const std::function<void()>& handler)
{
    const DesktopState::Frame frame(sender.desktop().state());
    try {
        handler();
    } catch (const Failure& failure) {
        report(sender, failure.description());
    } catch (const std::exception& error) {
        report(sender, error.what());
    }
}

void fromDesktop(Component& sender, const std::function<void()>& action)
{
    DesktopState& state = sender.desktop().state();
    if (state.ended() || state.closedToEvents)
        return;
    const DesktopState::Frame frame(state);
    try {
        action();
    } catch (const ProgramEnd& end) {
        state.noteEnd(end);
    } catch (const Failure& failure) {
        report(sender, failure.description());
    } catch (const std::exception& error) {
        report(sender, error.what());
    }
    state.flushDirty();
}

} // namespace trovarium
