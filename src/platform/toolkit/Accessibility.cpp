// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/toolkit/DrawnWidget.h"

#include "platform/toolkit/QtValues.h"

#include <QAbstractItemView>
#include <QAccessibleWidget>
#include <QComboBox>
#include <QDialog>
#include <QLineEdit>
#include <QScrollBar>
#include <QStringList>

#include <algorithm>
#include <array>

namespace trovarium {

namespace {

// In the order of Role.
constexpr std::array Roles{
    QAccessible::Pane, QAccessible::Button, QAccessible::StaticText, QAccessible::Graphic, QAccessible::Separator};

// By default a screen reader can read a value and not change it.
class ValueOf : public QAccessibleValueInterface {
public:
    QVariant minimumValue() const override { return 0; }
    QVariant maximumValue() const override { return 100; }
    QVariant minimumStepSize() const override { return 1; }
    void setCurrentValue(const QVariant&) override { }
};

bool isDrawnItem(const QObject* object)
{
    const auto* drawn = dynamic_cast<const DrawnWidget*>(object);
    return drawn != nullptr && !drawn->drawn().hasControls();
}

class DrawnAccessible : public QAccessibleWidget, public ValueOf {
public:
    explicit DrawnAccessible(DrawnWidget* widget)
        : QAccessibleWidget(widget)
        , m_widget(*widget)
    {
    }

    QAccessible::Role role() const override
    {
        if (m_drawn.percent() >= 0)
            return QAccessible::ProgressBar;
        return Roles.at(static_cast<std::size_t>(m_drawn.accessibleRole()));
    }

    QString text(QAccessible::Text kind) const override
    {
        switch (kind) {
        case QAccessible::Name:
            return toQString(m_drawn.accessibleName());
        case QAccessible::Description:
            return toQString(m_drawn.control() != nullptr ? m_drawn.control()->ToolTipText() : "");
        default:
            return QAccessibleWidget::text(kind);
        }
    }

    QRect rect() const override
    {
        const QRect place = m_widget.contentsRect();
        return {m_widget.mapToGlobal(place.topLeft()), place.size()};
    }

    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.focusable = m_drawn.takesFocus();
        if (m_drawn.hasControls())
            state.focusable = state.focusable && m_drawn.takesInput();
        else
            state.disabled = !m_drawn.takesInput();
        if (!state.focusable)
            state.focused = false;
        const Control* control = m_drawn.control();
        if (control == nullptr)
            return state;
        state.invisible = !control->isShown();
        // For instance the fields of the information box while it is down.
        state.offscreen = m_widget.visibleRegion().isEmpty();
        state.selectable = control->AccessibleSelected().has_value();
        state.selected = control->AccessibleSelected().value_or(false);
        return state;
    }

    // Widgets first, then what is drawn. The growing shape in a progress bar is left out: its value tells the same.
    int childCount() const override { return static_cast<int>(childWidgets().size()); }

    QAccessibleInterface* child(int index) const override
    {
        return QAccessible::queryAccessibleInterface(childWidgets().value(index));
    }

    int indexOfChild(const QAccessibleInterface* child) const override
    {
        return static_cast<int>(childWidgets().indexOf(child->object()));
    }

    QStringList actionNames() const override
    {
        QStringList names = QAccessibleWidget::actionNames();
        if (m_drawn.takesFocus())
            names.prepend(pressAction());
        if (isToggled())
            names.append(toggleAction());
        return names;
    }

    void doAction(const QString& name) override
    {
        if (name == pressAction() && m_drawn.takesFocus())
            m_widget.activate(Activation::Open);
        else if (name == toggleAction() && isToggled())
            m_widget.activate(Activation::Toggle);
        else
            QAccessibleWidget::doAction(name);
    }

    void* interface_cast(QAccessible::InterfaceType type) override
    {
        if (type == QAccessible::ValueInterface && m_drawn.percent() >= 0)
            return static_cast<QAccessibleValueInterface*>(this);
        return QAccessibleWidget::interface_cast(type);
    }

    QVariant currentValue() const override { return m_drawn.percent(); }

private:
    // Others that can be selected, such as a group, are selected by being opened.
    bool isToggled() const
    {
        return m_drawn.takesFocus() && m_drawn.DblClick.isWired() && m_drawn.control() != nullptr
            && m_drawn.control()->AccessibleSelected().has_value();
    }

    QObjectList childWidgets() const
    {
        QObjectList widgets;
        for (QObject* child : m_widget.children()) {
            if (child->isWidgetType() && !static_cast<QWidget*>(child)->isWindow())
                widgets.append(child);
        }
        const auto drawn = std::stable_partition(
            widgets.begin(), widgets.end(), [](const QObject* widget) { return !isDrawnItem(widget); });
        if (m_drawn.percent() >= 0)
            widgets.erase(drawn, widgets.end());
        return widgets;
    }

    DrawnWidget& m_widget;
    const Drawn& m_drawn = m_widget.drawn();
};

// Like the library's own, which gives the current choice as its name instead of the accessible name.
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

// Like the library's own, which would take the state from the widget: that is never disabled.
class BarAccessible : public QAccessibleWidget, public ValueOf {
public:
    explicit BarAccessible(QScrollBar* bar)
        : QAccessibleWidget(bar, QAccessible::ScrollBar)
        , m_bar(*bar)
    {
    }

    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.disabled = !takesInput();
        state.focusable = takesInput();
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
        if (takesInput())
            m_bar.setValue(value.toInt());
    }
    QVariant minimumValue() const override { return m_bar.minimum(); }
    QVariant maximumValue() const override { return m_bar.maximum(); }
    QVariant minimumStepSize() const override { return m_bar.singleStep(); }

private:
    // A control disables its bar only by taking it out of the tab order.
    bool takesInput() const { return m_bar.isEnabled() && m_bar.focusPolicy() != Qt::NoFocus; }

    QScrollBar& m_bar;
};

class WindowAccessible : public QAccessibleWidget {
public:
    using QAccessibleWidget::QAccessibleWidget;

    // Evaluated at each call: the interface is created before the window is shown, and so before it is modal. The
    // widget is asked, since the native window only exists once it is shown.
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
        // The library owns what is made here.
        if (auto* drawn = dynamic_cast<DrawnWidget*>(object))
            return new DrawnAccessible(drawn);
        auto* widget = qobject_cast<QWidget*>(object);
        if (widget == nullptr)
            return nullptr;
        const bool isForm = widget->windowType() == Qt::Window && !widget->objectName().isEmpty();
        if (isForm || qobject_cast<QDialog*>(widget) != nullptr)
            return new WindowAccessible(widget);
        if (auto* box = qobject_cast<QComboBox*>(widget))
            return new ComboAccessible(box);
        if (auto* bar = qobject_cast<QScrollBar*>(widget); bar != nullptr && !bar->objectName().isEmpty())
            return new BarAccessible(bar);
        return nullptr;
    });
}

} // namespace trovarium
