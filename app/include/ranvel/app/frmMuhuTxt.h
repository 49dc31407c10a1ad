// The "Muhurtha Analysis" page: running text that goes through the
// elements of the best moment in the language's sentences, in three
// styles (heading, sub-heading, body).
#pragma once

#include <QWidget>

class QTextEdit;

namespace ranvel {

class frmMuhuTxt : public QWidget {
    Q_OBJECT
public:
    explicit frmMuhuTxt(QWidget* parent = nullptr);

    // Writes the page anew from the engine.
    Q_INVOKABLE void Load();
    void WriteAnalysis();
    void WriteElements();

    QTextEdit* rtfText() const { return rtfText_; }

protected:
    void resizeEvent(QResizeEvent*) override;

private:
    QTextEdit* rtfText_;
};

}  // namespace ranvel
