#pragma once

#include <QString>

class QDialog;
class QFormLayout;
class QWidget;

namespace znt
{

/// The form of the group with that heading on `page`; if there is none, a new group before the page's spring.
QFormLayout& formOfGroup(QWidget& page, const QString& heading);

/// Adds a row with `words` in the column of fields.
void addBelowField(QFormLayout& form, QWidget& words);

/// Gives all forms of `dialog` a label column of the same width. Call it again when the font changes.
void alignLabelColumns(QDialog& dialog);

/// Has the words that explain `control` describe it to screen readers, too.
void describeControl(QWidget& control);

/// The same for every control of `dialog`, and puts the explanations below the words of their controls.
void describeControls(QDialog& dialog);

/// Has Tab go through the controls of `page` as they stand in it, after `before`. Returns the last one.
QWidget* tabThrough(QWidget& page, QWidget& before);

} // namespace znt
