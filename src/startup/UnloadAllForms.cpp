#include "startup/UnloadAllForms.h"

#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/Form.h"

namespace trovarium {

// From the last to the first, since an unload takes the form off the list; one that unloads others on its way
// may leave the index beyond the end.
void UnloadAllForms(Desktop& desktop, std::string_view ExceptName)
{
    for (int index = desktop.formsCount() - 1; index >= 0; --index) {
        if (index < desktop.formsCount() && desktop.formsItem(index).Name() != ExceptName)
            desktop.formsItem(index).unload();
    }
}

} // namespace trovarium
