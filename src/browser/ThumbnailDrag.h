// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "browser/WindowPart.h"

#include <cstdint>

namespace trovarium {

struct DragPointer;

// Drags the selected photographs to a new place in the group, or onto the row of another group to copy them there.
// Driven by the mouse events of the thumbnails; a frame, a mark and the mouse pointer show what a drop would do.
class ThumbnailDrag : public WindowPart {
public:
    ThumbnailDrag(frmMain& form, Album& album);

    // The left button went down on a thumbnail, at X and Y twips within it.
    void press(float X, float Y);

    // Cancels the drag: the release will go to a menu or a dialog.
    void breakOff();

    void imgThumbnail_MouseMove(int Index, int Button, int Shift, float X, float Y);
    void imgThumbnail_MouseUp(int Index);
    void Form_KeyPress(int KeyAscii); // Escape cancels the drag

    // Ends the drag by a drop on DropTarget; the photographs are only reordered with `Finish`.
    void FinishThumbnailDrag(bool Finish);

    // Moves the selected photographs as one block in the list's file, after position n for +n, before it for -n. Then
    // reads the list again and clears the selection. A list that another program has changed is only read.
    void moveSelected(std::int32_t position);

    // What a release would do: NoTarget, ReorderTarget, or the group row under the pointer, 0 to 7.
    std::int32_t DropTarget = NoTarget;
    std::int32_t DropPosition = 0; // +n after position n, -n before it
    bool MouseIsDown = false;
    bool ThumbnailDragging = false;

    static constexpr std::int32_t NoTarget = -1;
    static constexpr std::int32_t ReorderTarget = -2;

private:
    bool startsDrag(float X, float Y) const;
    int aimAtCell(const DragPointer& pointer);
    void dragOverFrame(int Index, float X, float Y);
    void dragOverList(int Index, float X, float Y);
    void endDrag();
    void hideMarks();

    std::int32_t ThumbDownX = 0; // twips within the thumbnail
    std::int32_t ThumbDownY = 0;
    bool ThumbMoveBusy = false;
};

} // namespace trovarium
