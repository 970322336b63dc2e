#pragma once

#include <QEvent>
#include <QSignalBlocker>

#include <functional>
#include <type_traits>
#include <utility>
#include <vector>

namespace Ui {

/** Stands for the form of a widget that has no designer form. */
class NoForm
{};

} // namespace Ui

namespace Vireling {

/**
 * The base of every screen: sets its texts when it is first polished and again when
 * the language or the locale changes, with its signals blocked, so that a change of
 * language looks like no change of values.
 *
 * `Base` is a widget class; `Form` a form class made by Qt's designer, or Ui::NoForm.
 * A template cannot carry Q_OBJECT: the class derived from this one does.
 */
template <typename Base, typename Form>
class TranslatableWidget : public Base, private Form
{
public:
    using Base::Base;

    /** Called after retranslate(), in the order of registration; must not throw. */
    void addRetranslation(std::function<void()> callback)
    {
        retranslations.push_back(std::move(callback));
    }

protected:
    /** The form, for the class derived from this one: setupUi() and the form's widgets. */
    Form &ui() { return *this; }

    /** Sets all texts. With a form, its retranslateUi() is to be part of it. */
    virtual void retranslate()
    {
        if constexpr (!std::is_same_v<Form, Ui::NoForm>)
            Form::retranslateUi(this);
    }

    bool event(QEvent *event) override
    {
        if (changesTexts(event->type())) {
            const QSignalBlocker blocked(this);
            retranslate();
            for (const auto &retranslation : retranslations)
                retranslation();
        }
        return Base::event(event);
    }

private:
    static bool changesTexts(QEvent::Type type)
    {
        return type == QEvent::Polish || type == QEvent::LanguageChange ||
               type == QEvent::LocaleChange;
    }

    std::vector<std::function<void()>> retranslations;
};

} // namespace Vireling
