#pragma once

#include "browser/WindowPart.h"

#include <cstdint>

namespace trovarium {

struct DragPointer;

// Drags the selected photographs to a new place in the group, or onto a group's row to copy them there. It is
// made of the three mouse events of a thumbnail: two shapes and the pointer tell, a re-read of the list ends it.
class ThumbnailDrag : public WindowPart {
public:
    ThumbnailDrag(frmMain& form, Album& album);

    // The left button went down on a thumbnail, at X and Y twips within it.
    void press(float X, float Y);

    // The release will go elsewhere: nothing is dropped.
    void breakOff();

    void imgThumbnail_MouseMove(int Index, int Button, int Shift, float X, float Y);
    void imgThumbnail_MouseUp(int Index);
    void Form_KeyPress(int KeyAscii); // Escape takes the drag back

    // Ends the drag: does what DropTarget says, a reorder only with `Finish`.
    void FinishThumbnailDrag(bool Finish);

    // Moves the selected ones as one block in the list's file, behind position +n or in front of position n for
    // -n, and reads it again, nothing selected. What somebody else has changed since is only read.
    void moveSelected(std::int32_t position);

    // What a release would do: NoTarget, ReorderTarget, or the group row under the pointer, 0 to 7.
    std::int32_t DropTarget = NoTarget;
    std::int32_t DropPosition = 0; // +n behind position n, -n in front of position n
    bool MouseIsDown = false;
    bool ThumbnailDragging = false;

    static constexpr std::int32_t NoTarget = -1;
    static constexpr std::int32_t ReorderTarget = -2;

private:
    bool startsDrag(float X, float Y) const;
    int aimAtCell(const DragPointer& pointer);
    void dragOverFrame(int Index, float X, float Y);
    void dragOverList(int Index, float X, float Y);
    int rowAt(float x, float y) const;
    void hideMarks();

    std::int32_t ThumbDownX = 0; // twips within the thumbnail
    std::int32_t ThumbDownY = 0;
    bool ThumbMoveBusy = false;
};

} // namespace trovarium
