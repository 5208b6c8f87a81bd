#pragma once

class QMenuBar;
class QWidget;

namespace trovarium {

class Form;
class Menu;

// The bar of the form's visible top menus, a child of its window; null when it has none. Entries follow
// their Menu from then on.
QMenuBar* makeMenuBar(Form& form, QWidget* window);

// The form loses its window: the menus' views go.
void dropMenus(Form& form);

// Opens at the pointer; returns when an entry was chosen and its handler has run, or nothing was.
void popUp(Form& form, Menu& menu);

} // namespace trovarium
