#pragma once

#include <string>

namespace trovarium {

struct Album;
class frmMain;

// Takes the selected photographs out of the library and out of every group. Photograph, information and clip go
// to a folder called Removed inside their own; only the thumbnail is deleted.
class Removal {
public:
    Removal(frmMain& form, Album& album);

    // Goes on past any failure and reports none.
    void RemoveFromProgram();

    void mnuEditRemoveFromAlbum_Click();

private:
    void setAside(const std::string& name);

    frmMain& m_form;
    Album& m_album;
};

} // namespace trovarium
