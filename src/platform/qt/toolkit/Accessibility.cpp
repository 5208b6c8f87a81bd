#include "platform/qt/toolkit/Accessibility.h"

#include "platform/qt/toolkit/FormWindow.h"
#include "platform/qt/toolkit/ItemView.h"
#include "platform/qt/toolkit/OpenOrClosedBar.h"
#include "platform/qt/toolkit/SurfaceView.h"
#include "platform/toolkit/PictureBox.h"

#include <QAbstractItemView>
#include <QAccessibleWidget>
#include <QComboBox>
#include <QDialog>
#include <QLineEdit>
#include <QStringList>
#include <QWindow>

#include <algorithm>

namespace trovarium {

namespace {

void addSelection(QAccessible::State& state, const Control& control)
{
    state.selectable = control.AccessibleSelected().has_value();
    state.selected = control.AccessibleSelected().value_or(false);
}

class ItemAccessible : public QAccessibleInterface, public QAccessibleActionInterface {
public:
    explicit ItemAccessible(ItemView& item)
        : m_item(item)
    {
    }

    bool isValid() const override { return true; }
    QObject* object() const override { return nullptr; }
    QWindow* window() const override { return m_item.surface().window()->windowHandle(); }
    QAccessibleInterface* parent() const override { return QAccessible::queryAccessibleInterface(&m_item.surface()); }
    QAccessibleInterface* child(int) const override { return nullptr; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }

    QString text(QAccessible::Text kind) const override
    {
        switch (kind) {
        case QAccessible::Name:
            return m_item.accessibleText();
        case QAccessible::Description:
            return toQString(m_item.control().ToolTipText());
        default:
            return {};
        }
    }
    void setText(QAccessible::Text, const QString&) override { }

    QRect rect() const override
    {
        const QRect place = m_item.place().toAlignedRect();
        return {m_item.surface().mapToGlobal(place.topLeft()), place.size()};
    }
    QAccessible::Role role() const override { return m_item.accessibleRole(); }
    QAccessible::State state() const override
    {
        QAccessible::State state;
        state.invisible = !m_item.control().isShown();
        // Such as the fields of a box that is down.
        state.offscreen = !m_item.surface().visibleRegion().intersects(m_item.place().toAlignedRect());
        state.disabled = !m_item.control().takesInput();
        state.focusable = m_item.takesFocus();
        state.focused = m_item.surface().hasFocus() && m_item.surface().focusItem() == &m_item;
        addSelection(state, m_item.control());
        return state;
    }

    void* interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this) : nullptr;
    }
    QStringList actionNames() const override
    {
        if (!m_item.takesFocus())
            return {};
        return {pressAction(), setFocusAction()};
    }
    void doAction(const QString& name) override
    {
        if (name == pressAction())
            m_item.surface().activate(m_item, Activation::Open);
        else if (name == setFocusAction())
            m_item.surface().giveFocus(m_item);
    }
    QStringList keyBindingsForAction(const QString&) const override { return {}; }

private:
    ItemView& m_item;
};

// The widgets on the surface, then its drawn items. A box with a value is a progress bar.
class SurfaceAccessible : public QAccessibleWidget, public QAccessibleValueInterface {
public:
    explicit SurfaceAccessible(SurfaceView* surface)
        : QAccessibleWidget(surface, QAccessible::Pane)
        , m_surface(*surface)
    {
    }

    QAccessible::Role role() const override
    {
        if (percent() >= 0)
            return QAccessible::ProgressBar;
        return m_surface.isClickable() ? QAccessible::Button : QAccessible::Pane;
    }
    // Its items take the focus that the widget has for them.
    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        if (!m_surface.isClickable())
            state.focusable = state.focused = false;
        if (const auto* box = dynamic_cast<const PictureBox*>(m_surface.container()))
            addSelection(state, *box);
        return state;
    }

    void* interface_cast(QAccessible::InterfaceType type) override
    {
        if (type == QAccessible::ValueInterface && percent() >= 0)
            return static_cast<QAccessibleValueInterface*>(this);
        return QAccessibleWidget::interface_cast(type);
    }
    QVariant currentValue() const override { return percent(); }
    void setCurrentValue(const QVariant&) override { }
    QVariant minimumValue() const override { return 0; }
    QVariant maximumValue() const override { return 100; }
    QVariant minimumStepSize() const override { return 1; }

    // A box without a name of its own is called as the first text on it.
    QString text(QAccessible::Text kind) const override
    {
        QString text = QAccessibleWidget::text(kind);
        if (kind != QAccessible::Name || !text.isEmpty() || !m_surface.isClickable())
            return text;
        for (ItemView* item : m_surface.items()) {
            if (item->control().Visible() && !item->accessibleText().isEmpty())
                return item->accessibleText();
        }
        return m_surface.toolTip();
    }

    QStringList actionNames() const override
    {
        QStringList names = QAccessibleWidget::actionNames();
        if (m_surface.isClickable())
            names.prepend(pressAction());
        return names;
    }
    void doAction(const QString& name) override
    {
        if (name == pressAction() && m_surface.isClickable())
            m_surface.activate(Activation::Open);
        else
            QAccessibleWidget::doAction(name);
    }

    int childCount() const override
    {
        const bool isBar = percent() >= 0; // what grows in it is its value
        return QAccessibleWidget::childCount() + (isBar ? 0 : static_cast<int>(m_surface.items().size()));
    }

    QAccessibleInterface* child(int index) const override
    {
        const int widgets = QAccessibleWidget::childCount();
        if (index < widgets)
            return QAccessibleWidget::child(index);
        const auto item = static_cast<std::size_t>(index - widgets);
        return item < m_surface.items().size() ? interfaceOf(*m_surface.items()[item]) : nullptr;
    }

    int indexOfChild(const QAccessibleInterface* child) const override
    {
        const std::vector<ItemView*>& items = m_surface.items();
        const auto found =
            std::find_if(items.begin(), items.end(), [&](ItemView* item) { return interfaceOf(*item) == child; });
        if (found == items.end())
            return QAccessibleWidget::indexOfChild(child);
        return QAccessibleWidget::childCount() + static_cast<int>(found - items.begin());
    }

    QAccessibleInterface* childAt(int x, int y) const override
    {
        if (QAccessibleInterface* widget = QAccessibleWidget::childAt(x, y))
            return widget;
        ItemView* item = m_surface.itemAt(m_surface.mapFromGlobal(QPointF(x, y)));
        return item != nullptr ? interfaceOf(*item) : nullptr;
    }

    QAccessibleInterface* focusChild() const override
    {
        if (m_surface.hasFocus() && m_surface.focusItem() != nullptr)
            return interfaceOf(*m_surface.focusItem());
        return QAccessibleWidget::focusChild();
    }

private:
    int percent() const
    {
        const auto* box = dynamic_cast<const PictureBox*>(m_surface.container());
        return box != nullptr ? box->AccessibleValue() : -1;
    }

    static QAccessibleInterface* interfaceOf(ItemView& item)
    {
        return QAccessible::accessibleInterface(item.accessibleId());
    }

    SurfaceView& m_surface;
};

// As the library's own, which is called by what is chosen in it instead of by its name.
class ComboAccessible : public QAccessibleWidget {
public:
    explicit ComboAccessible(QComboBox* box)
        : QAccessibleWidget(box, QAccessible::ComboBox)
        , m_box(*box)
    {
    }

    QString text(QAccessible::Text kind) const override
    {
        return kind == QAccessible::Value ? m_box.currentText() : QAccessibleWidget::text(kind);
    }

    int childCount() const override { return m_box.isEditable() ? 2 : 1; }
    QAccessibleInterface* child(int index) const override
    {
        if (index == 0)
            return QAccessible::queryAccessibleInterface(m_box.view());
        return index == 1 ? QAccessible::queryAccessibleInterface(m_box.lineEdit()) : nullptr;
    }
    int indexOfChild(const QAccessibleInterface* child) const override
    {
        if (child->object() == m_box.view())
            return 0;
        return m_box.isEditable() && child->object() == m_box.lineEdit() ? 1 : -1;
    }

    QStringList actionNames() const override { return {showMenuAction(), pressAction()}; }
    void doAction(const QString& name) override
    {
        if (name == showMenuAction() || name == pressAction())
            m_box.view()->isVisible() ? m_box.hidePopup() : m_box.showPopup();
    }

private:
    QComboBox& m_box;
};

// As the library's own, which asks the widget whether it is disabled.
class BarAccessible : public QAccessibleWidget, public QAccessibleValueInterface {
public:
    explicit BarAccessible(OpenOrClosedBar* bar)
        : QAccessibleWidget(bar, QAccessible::ScrollBar)
        , m_bar(*bar)
    {
    }

    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.disabled = !m_bar.takesInput();
        state.focusable = !state.disabled;
        return state;
    }

    void* interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::ValueInterface ? static_cast<QAccessibleValueInterface*>(this)
                                                   : QAccessibleWidget::interface_cast(type);
    }
    QVariant currentValue() const override { return m_bar.value(); }
    void setCurrentValue(const QVariant& value) override
    {
        if (m_bar.takesInput())
            m_bar.setValue(value.toInt());
    }
    QVariant minimumValue() const override { return m_bar.minimum(); }
    QVariant maximumValue() const override { return m_bar.maximum(); }
    QVariant minimumStepSize() const override { return m_bar.singleStep(); }

private:
    OpenOrClosedBar& m_bar;
};

class WindowAccessible : public QAccessibleWidget {
public:
    using QAccessibleWidget::QAccessibleWidget;

    // Asked when it is wanted: a window is known to the register before it is shown, and so before it is modal.
    // Of the widget: the native window comes only with the show.
    QAccessible::Role role() const override { return widget()->isModal() ? QAccessible::Dialog : QAccessible::Window; }
    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.modal = widget()->isModal();
        return state;
    }
};

} // namespace

void installAccessibility()
{
    QAccessible::installFactory([](const QString&, QObject* object) -> QAccessibleInterface* {
        // The register owns what is made here.
        if (auto* surface = dynamic_cast<SurfaceView*>(object))
            return new SurfaceAccessible(surface);
        if (dynamic_cast<FormWindow*>(object) != nullptr || qobject_cast<QDialog*>(object) != nullptr)
            return new WindowAccessible(static_cast<QWidget*>(object));
        if (auto* box = qobject_cast<QComboBox*>(object))
            return new ComboAccessible(box);
        if (auto* bar = dynamic_cast<OpenOrClosedBar*>(object))
            return new BarAccessible(bar);
        return nullptr;
    });
}

QAccessible::Id registerAccessible(ItemView& item)
{
    return QAccessible::registerAccessibleInterface(new ItemAccessible(item)); // which owns it
}

} // namespace trovarium
