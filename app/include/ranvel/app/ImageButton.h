// A picture button: an icon, a caption and a line that describes it, lit
// when the pointer is over it or the keyboard is on it, and marked while it
// is the chosen one of its group. Used for the categories of the request
// form.
#pragma once

#include <QAbstractButton>
#include <QIcon>

namespace ranvel {

class ImageButton : public QAbstractButton {
    Q_OBJECT
public:
    ImageButton(const QIcon& icon, const QString& caption, const QString& description, QWidget* parent = nullptr);

    QString Caption() const { return text(); }
    QString Description() const { return description_; }
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent*) override;
    void enterEvent(QEnterEvent*) override;
    void leaveEvent(QEvent*) override;

private:
    QString description_;
    bool hover_ = false;
};

}  // namespace ranvel
