#include "modules/catalogue/parametermodule.h"

#include "modules/catalogue/choosers.h"
#include "modules/documentstate.h"
#include "modules/modulehost.h"
#include "proj/controls/picturecache.h"

#include <QPainter>

const Chooser* parameterModule::popUpChooser(int p_mode) const
{
    return findChooser(ChooserKind::PopUp, p_mode);
}

void parameterModule::addChooser(const ButtonLook& p_look, const QRect& p_geometry,
                                 std::function<void()> p_press, const QString& p_text)
{
    addButton({p_look, p_geometry, p_text, std::move(p_press)});
}

void parameterModule::addNumberField(const ButtonLook& p_look, const QRect& p_geometry,
                                     uint32_t p_keys, const QString& p_text, const char* p_toolTip)
{
    const auto press = [this, p_keys] { OnSetNumber(p_keys); };
    const auto typed = [this](const QString& p_typed) {
        takeNumber(p_typed);
        parameterChanged();
    };
    addButton({p_look, p_geometry, p_text, press, p_keys, typed, p_toolTip});
}

void parameterModule::addOnlyNumberField(int p_width, uint32_t p_keys, const QString& p_text)
{
    addNumberField({":/select_time__nol_40x80.png", ":/select_time__pre_40x80.png", false, false},
                   QRect(20, 100, p_width, 40), p_keys, p_text);
}

SelectableButton& parameterModule::numberField()
{
    return *static_cast<SelectableButton*>(wakeButton(0));
}

void parameterModule::typeInField(int p_key)
{
    SelectableButton& field = numberField();
    field.applyKey(p_key);
    takeNumber(field.text());
    parameterChanged();
}

void parameterModule::parameterChanged()
{
    setDocumentModified(true);
    if (ModuleHost* host = moduleHost()) {
        host->noteParameter();
    }
    update();
}

int parameterModule::numberIn(const QDomElement& p_element, const char* p_name)
{
    return p_element.attribute(QString::fromLatin1(p_name)).toInt();
}

QDomElement parameterModule::portAlone(int p_port)
{
    QDomDocument document;
    QDomElement element = document.createElement(QStringLiteral("module"));
    element.setAttribute(QStringLiteral("port"), p_port);
    return element;
}

void parameterModule::drawPicture(QPainter* p_painter, const char* p_path, int p_x, int p_y)
{
    ::drawPicture(p_painter, p_x, p_y, picture(QString::fromLatin1(p_path)));
}

void parameterModule::drawBody(QPainter* p_painter, const char* p_path) const
{
    ::drawPicture(p_painter, 0, 0, jointPicture(QString::fromLatin1(p_path), filledCorners()));
}

void parameterModule::drawOn(QPainter* p_painter, const char* p_body, const char* p_overlay) const
{
    drawBody(p_painter, p_body);
    drawPicture(p_painter, p_overlay);
}

void parameterModule::drawMotion(QPainter* p_painter, const char* p_overlay, bool p_timed) const
{
    // Meant: the name says 160, the picture is 140 wide; it is the resource's own name.
    drawOn(p_painter, ":/move_icon_160x120.png", p_overlay);
    if (p_timed) {
        drawPicture(p_painter, ":/time_icon_24x24.png", 78, 56);
    }
}

void parameterModule::drawCentred(QPainter* p_painter, const QPixmap& p_picture) const
{
    const QRectF rect = boundingRect();
    const int halfWidth = p_picture.width() / 2;
    const int halfHeight = p_picture.height() / 2;
    ::drawPicture(p_painter, static_cast<int>(0.5 * rect.width() - halfWidth),
                  static_cast<int>(0.5 * rect.height() - halfHeight - 10), p_picture);
}

void choiceModule::loadXml(const QDomElement& p_element)
{
    parameterModule::loadXml(p_element);
    n = numberIn(p_element, "n");
    update();
}

void choiceModule::writeAttributes(QDomElement& p_element) const
{
    p_element.setAttribute(QStringLiteral("n"), n);
}

void choiceModule::choose(int p_choice)
{
    n = p_choice;
    parameterChanged();
}
