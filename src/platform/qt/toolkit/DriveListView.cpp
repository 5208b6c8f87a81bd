#include "platform/qt/toolkit/DesktopState.h"
#include "platform/qt/toolkit/View.h"
#include "platform/toolkit/DriveList.h"

#include <QComboBox>
#include <QSignalBlocker>
#include <QWheelEvent>

#include <algorithm>

namespace trovarium {

namespace {

class DriveBox : public QComboBox {
public:
    DriveBox(DriveList& drives, QWidget* parent)
        : QComboBox(parent)
        , m_drives(&drives)
    {
    }

    void detach() { m_drives = nullptr; }

    // A medium may have come since the list was last looked at.
    void showPopup() override
    {
        if (m_drives == nullptr)
            return;
        m_drives->refreshPlaces();
        QComboBox::showPopup();
    }

protected:
    void wheelEvent(QWheelEvent* event) override { event->ignore(); }

private:
    DriveList* m_drives;
};

class DriveListView : public WidgetView {
public:
    explicit DriveListView(DriveList& drives)
        : DriveListView(drives, new DriveBox(drives, surfaceWidget(drives)))
    {
    }
    ~DriveListView() override
    {
        if (widget() != nullptr)
            m_box->detach();
    }

    void apply(Change change) override
    {
        if (change == Change::Content)
            showPlaces();
        else
            WidgetView::apply(change);
    }

private:
    DriveListView(DriveList& drives, DriveBox* box)
        : WidgetView(drives, box)
        , m_drives(drives)
        , m_box(box)
    {
        showPlaces();
        QObject::connect(m_box, &QComboBox::activated, m_box,
            [this](int index) { fromDesktop(m_drives, [&] { m_drives.chosen(static_cast<std::size_t>(index)); }); });
    }

    void showPlaces()
    {
        const std::vector<std::string>& places = m_drives.places();
        const QSignalBlocker quiet(m_box);
        m_box->clear();
        for (const std::string& place : places)
            m_box->addItem(toQString(m_drives.nameOf(place)));
        const auto chosen = std::find(places.begin(), places.end(), m_drives.Drive());
        // It stays on show though its medium may be gone.
        if (chosen == places.end())
            m_box->addItem(toQString(m_drives.nameOf(m_drives.Drive())));
        m_box->setCurrentIndex(static_cast<int>(chosen - places.begin()));
    }

    DriveList& m_drives;
    DriveBox* m_box;
};

} // namespace

std::unique_ptr<View> DriveList::makeView()
{
    return std::make_unique<DriveListView>(*this);
}

} // namespace trovarium
