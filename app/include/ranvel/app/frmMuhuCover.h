// The "Muhurtha Score" page: the request, the person or the couple, the
// best Muhurtha as the lagna's span with its chart, and the score. A page of
// letter paper laid out in twips; printing and export copy its controls
// from where they stand. It reads the engine's members and keeps no result
// of its own: every load builds it anew from them.
#pragma once

#include <QWidget>
#include <memory>

class QLabel;

namespace ranvel {

class Kundali;
class clsPlanets;

class frmMuhuCover : public QWidget {
    Q_OBJECT
public:
    // The page's size in twips: letter paper.
    static constexpr int kPageWidth = 12240;
    static constexpr int kPageHeight = 15840;

    explicit frmMuhuCover(QWidget* parent = nullptr);
    ~frmMuhuCover() override;

    // Fills the page from the engine: the second person's block for a
    // marriage, then FillValues, SetFonts, SetCaptions, DrawBestChart.
    Q_INVOKABLE void Load();
    void FillValues();
    void SetFonts();
    void SetCaptions();
    void DrawBestChart();

    Kundali* kunMuhu() const;
    QLabel* Label(const char* name) const;

private:
    struct Impl;
    std::unique_ptr<Impl> d_;
};

}  // namespace ranvel
