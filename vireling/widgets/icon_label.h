#pragma once

#include <QFrame>
#include <QIcon>
#include <QSize>

namespace Vireling {

/** A frame with an icon in its middle. Without an icon it is the frame alone. */
class IconLabel : public QFrame
{
    Q_OBJECT

public:
    explicit IconLabel(QWidget *parent = nullptr);
    explicit IconLabel(const QIcon &icon, QWidget *parent = nullptr);

    QIcon icon() const { return shownIcon; }
    void setIcon(const QIcon &icon);

    /** In logical pixels; unless set, the style's PM_SmallIconSize square. */
    QSize iconSize() const;
    void setIconSize(const QSize &size);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QIcon shownIcon;
    QSize ownIconSize; // invalid unless set
};

} // namespace Vireling
