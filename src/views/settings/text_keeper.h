#pragma once

#include <QObject>
#include <QPointer>
#include <QQuickTextDocument>
#include <QtQml/qqmlregistration.h>

#include "views/settings/kept_text.h"

class QTextDocument;

namespace varnhold {

// What an editor of several lines was given to show, and what has become of it under the user's
// hands: blanks that don't break and ends of lines of every kind stay as they were, other than in
// the editor's own text. Main thread.
class TextKeeper : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QQuickTextDocument* document WRITE setDocument READ document)
    Q_PROPERTY(QString text READ text NOTIFY textChanged)

public:
    using QObject::QObject;

    [[nodiscard]] QQuickTextDocument* document() const { return shown_; }
    void setDocument(QQuickTextDocument* document);
    [[nodiscard]] const QString& text() const { return kept_.text(); }

    // The editor has just been given this text from outside.
    Q_INVOKABLE void take(const QString& text);
    // The editor's text has changed in any other way.
    Q_INVOKABLE void follow();

signals:
    void textChanged();

private:
    void noteEdit(int at);
    [[nodiscard]] QString form() const;

    QPointer<QQuickTextDocument> shown_;
    KeptText kept_;
    int editedAt_ = -1; // -1 while nothing was edited since the last look
};

} // namespace varnhold
