#pragma once

#include <QObject>

#include <functional>

namespace trovarium {

// Brings a widget up to date once for many changes, when the event loop next turns or before the user acts
// on it: a scan that fills a list with thousands of names must not lay it out each time.
class LateUpdate : private QObject {
public:
    explicit LateUpdate(std::function<void()> update);

    void schedule();
    bool isDue() const { return m_due; }
    void flush(); // now, if one is due

protected:
    bool event(QEvent* event) override;

private:
    std::function<void()> m_update;
    bool m_due = false;
};

} // namespace trovarium
