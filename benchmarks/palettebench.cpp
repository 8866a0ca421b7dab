#include "palettebench.h"

#include "proj/controls/selectablebutton.h"
#include "proj/tzlabel.h"

#include <QTest>

PaletteBench::PaletteBench() : m_palette(&m_window, &m_window), m_stage(&m_window, &m_palette)
{
    m_window.resize(1920, 1080);
    m_palette.setGeometry(0, 844, 1920, 236);
    m_window.show();
    m_stage.paint();
}

Samples PaletteBench::tabs(int p_rounds)
{
    Samples samples;
    for (int i = 0; i < p_rounds; ++i) {
        for (int tab = m_palette.folders().size() - 1; tab >= 0; --tab) {
            m_stage.takePainted(
                samples, [&] { QTest::mouseClick(m_palette.folders().at(tab), Qt::LeftButton); });
        }
    }
    return samples;
}

Samples PaletteBench::panels(int p_rounds)
{
    Samples samples;
    for (int i = 0; i < p_rounds; ++i) {
        m_stage.takePainted(samples, [this] {
            m_palette.OnShowNumKeyboardSignal(KeyboardDigits | KeyboardPoint | KeyboardDelete);
        });
        for (const int type : {1, 2}) {
            m_stage.takePainted(samples, [&] { m_palette.onShowPanelSignal(type, 0); });
        }
        for (const int key : TzBlockWidget::voicePictures().keys()) {
            m_stage.takePainted(samples, [&] { m_palette.OnShowVoiceSignal(key); });
        }
        for (const int key : TzBlockWidget::expressionPictures().keys()) {
            m_stage.takePainted(samples, [&] { m_palette.OnShowExpressionSignal(key); });
        }
    }
    return samples;
}
