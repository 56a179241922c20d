#pragma once

#include <QLabel>
#include <QString>

// A one-line label for a text that may be far longer than the room it has: it shows as much as
// fits, cut in the middle so both ends stay readable, and keeps the whole text in its tooltip.
// It never asks its layout for more than the room it was given.
class ElidedLabel : public QLabel
{
    Q_OBJECT
public:
    explicit ElidedLabel(QWidget *parent = nullptr);

    void setFullText(const QString &text);
    QString fullText() const { return m_full; }

    QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void elide();

    QString m_full;
};
