#pragma once

#include "vireling/widgets/translatable_widget.h"

#include <QCoreApplication>
#include <QWidget>

#include <functional>

class QBoxLayout;
class QGridLayout;
class QLabel;
class QLayout;
class QVBoxLayout;

namespace Vireling {

/** A text of the gallery in the language of the moment. */
inline QString galleryText(const char *source)
{
    return QCoreApplication::translate("Gallery", source);
}

/** `window`, made a part of a page, in a frame that stands for the one it would have. */
QWidget *framed(QWidget *window);

/**
 * What every page of the gallery is: a title, below it sections with headings. All
 * texts go through it, so that they follow a change of language.
 */
class PageWidget : public TranslatableWidget<QWidget, Ui::NoForm>
{
    Q_OBJECT

public:
    PageWidget(const char *title, QWidget *parent);

    /** Sets texts, now and again whenever the language changes. */
    void addText(const std::function<void()> &setText);

    /** Gives `object`, which is to live as long as the page, a text by its setter. */
    template <typename Object, typename Result, typename Class>
    Object *say(Object *object, Result (Class::*setter)(const QString &), const char *source)
    {
        addText([=] { (object->*setter)(galleryText(source)); });
        return object;
    }

    /** The name that a control without a text of its own has for assistive techniques. */
    void nameControl(QWidget *control, const std::function<QString()> &name);

    /** A heading; what goes below it is laid out in rows and columns. */
    QGridLayout *addGrid(const char *heading);
    /** The same for things side by side or one below the other. */
    QBoxLayout *addRow(const char *heading);
    QBoxLayout *addColumn(const char *heading);

    /** `control` with a little caption above it. It is also named so if it has no text. */
    QLayout *captioned(const char *caption, QWidget *control);
    QLabel *makeCaption(const char *caption);

    /** What is left of the page's height goes below the last section. */
    void endSections();

    /** Design pixels at 96 dots per inch in pixels. */
    int scaled(int designPixels) const;

private:
    void addHeading(const char *heading);

    QVBoxLayout *sections;
};

} // namespace Vireling
