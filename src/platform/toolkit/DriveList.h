#pragma once

#include "platform/toolkit/Control.h"

#include <string>
#include <vector>

namespace trovarium {

// The places where a search for files may start: the root, the user's folder, mounted media.
class DriveList : public Control {
public:
    DriveList(Container* parent, const Plan& plan);

private:
    const std::string& drive() const { return m_drive; }
    void setDrive(std::string value); // "Device unavailable" for a place that can't be listed

public:
    Property<&DriveList::drive, &DriveList::setDrive> Drive{this};

    const std::vector<std::string>& places() const { return m_places; }

    Event<> Change{this};

    std::unique_ptr<View> makeView() override;

private:
    std::vector<std::string> m_places;
    std::string m_drive;
};

} // namespace trovarium
