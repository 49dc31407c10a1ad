// The page designer: the colours of the result pages and of the chart, a
// sample of each, and named sets of them (themes). Nothing is stored until
// "Save", which keeps the dialog open; a theme is kept or deleted at once.
#pragma once

#include <QDialog>
#include <memory>

#include "ranvel/data/themes.h"

namespace ranvel {

class frmColorEnv : public QDialog {
    Q_OBJECT
public:
    explicit frmColorEnv(QWidget* parent = nullptr);
    ~frmColorEnv() override;

    // The colours the swatches show now.
    PageColors Page() const;
    ChartColors Chart() const;

signals:
    // The colours were saved and are the active ones now: pages built
    // before show the old ones.
    void Saved();

private:
    struct Impl;
    std::unique_ptr<Impl> d_;
};

}  // namespace ranvel
