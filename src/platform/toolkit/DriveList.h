#pragma once

#include "platform/toolkit/Control.h"

#include <string>
#include <vector>

namespace trovarium {

// The places where a search for files may start: the root, the user's folder, mounted media. Drive is the
// one that holds the folder it was set to.
class DriveList : public Control {
public:
    DriveList(Container* parent, const Plan& plan);

private:
    const std::string& drive() const { return m_drive; }
    void setDrive(std::string value); // "Device unavailable" for a folder on a place that isn't there

public:
    Property<&DriveList::drive, &DriveList::setDrive> Drive{this};

    const std::vector<std::string>& places() const { return m_places; }
    std::string nameOf(const std::string& place) const; // as a person knows it

    Event<> Change{this};

    std::unique_ptr<View> makeView() override;

    // The view tells which place the user chose. It is kept even if it can't be read any more. Change comes for the
    // one that stands there too: it may be readable by now, or its folders were left meanwhile.
    void chosen(std::size_t place);
    // Looks again for what is mounted.
    void refreshPlaces();

private:
    std::vector<std::string> m_places;
    std::string m_drive;
};

} // namespace trovarium
