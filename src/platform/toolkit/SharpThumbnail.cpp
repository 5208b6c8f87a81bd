// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/toolkit/SharpThumbnail.h"

#include "platform/toolkit/DesktopState.h"
#include "platform/toolkit/Image.h"
#include "runtime/Failure.h"

#include <QWidget>

#include <algorithm>
#include <cmath>
#include <utility>

namespace trovarium {

namespace {

// Whether the one is the other's thumbnail, by the sides, which are rounded to whole pixels. Otherwise the photograph
// has changed since the thumbnail was made.
bool hasSameShape(const Picture& thumbnail, const Picture& photograph)
{
    const double scale = static_cast<double>(std::max(thumbnail.width(), thumbnail.height()))
        / std::max(photograph.width(), photograph.height());
    return std::abs(photograph.width() * scale - thumbnail.width()) <= 1
        && std::abs(photograph.height() * scale - thumbnail.height()) <= 1;
}

} // namespace

SharpThumbnail::SharpThumbnail(Image& image, std::function<std::string()> photograph)
    : m_image(image)
    , m_photograph(std::move(photograph))
{
}

SharpThumbnail::~SharpThumbnail()
{
    drop();
}

const Picture& SharpThumbnail::toPaint()
{
    if (const QSize size = sizeOnDevice(); size != m_asked) { // or the window is on another screen now
        drop();
        m_picture = {};
        m_asked = size;
        if (!size.isEmpty())
            m_image.desktop().state().invokeLater([asked = weak_from_this()] {
                if (const auto still = asked.lock())
                    still->ask();
            });
    }
    return m_picture.empty() ? m_image.Picture() : m_picture;
}

void SharpThumbnail::drop()
{
    if (m_asked.isEmpty() || !m_picture.empty())
        return;
    m_image.desktop().pictures().dropSharper(this);
    m_asked = {};
}

// Empty where the thumbnail has pixels enough, and for one that the image cuts off.
QSize SharpThumbnail::sizeOnDevice() const
{
    const QSize size(m_image.Picture().width(), m_image.Picture().height());
    const qreal scale = m_image.widget()->devicePixelRatioF();
    if (scale <= 1 || size.boundedTo(m_image.widget()->size()) != size)
        return {};
    return (QSizeF(size) * scale).toSize();
}

void SharpThumbnail::ask()
{
    if (m_asked.isEmpty())
        return; // dropped meanwhile
    attempt([&] {
        m_image.desktop().pictures().sharpen(this, m_photograph(), m_asked.width(), m_asked.height(),
            [this](const Picture& decoded) { receive(decoded); });
    });
}

void SharpThumbnail::receive(const Picture& decoded)
{
    if (!hasSameShape(m_image.Picture(), decoded))
        return;
    m_picture = decoded;
    m_image.widget()->update();
}

} // namespace trovarium
