#pragma once

#include "modules/catalogue/choosers.h"
#include "modules/catalogue/concretemodule.h"
#include "modules/catalogue/parametermodule.h"

/** A block for one of the two displays, on port 2 or 3. */
class displayModule : public parameterModule
{
public:
    using parameterModule::parameterModule;

    void loadXml(const QDomElement& p_element) override;
    /** Meant: the port alone, also where the block has a symbol; the design says so. */
    QDomElement paramsElement() const override { return portAlone(port); }
    void setParamIndex(int p_index) override;

    /** Not range-checked on load. */
    int displayPort() const { return port; }

protected:
    displayModule(const displayModule& p_other) = default;
    void writeAttributes(QDomElement& p_element) const override;
    /** Adds the button for the port as the button at p_index. */
    void addPortButton(int p_index, const ButtonLook& p_look, const QRect& p_geometry);

private:
    int port = 2;
    int m_portButton = 0;
};

/** What a block for one display differs in. */
struct SymbolLook {
    SymbolSet symbols;    /**< the panel and the pictures */
    int (*number)(int);   /**< from the place in the panel to the symbol's number */
    const char* fragment; /**< C text: %1 the port, %2 the symbol's number */
};

// Meant: no text of these blocks ends in a line feed, since generated text stays byte for byte the
// same, and "symble" and "LedMaritx" are the controller's own spelling.

/** Symbol numbers by place in the panel. */
namespace symbolNumbers
{
int sign(int p_symbol);
int arithmetic(int p_symbol);
int digit(int p_symbol);
int letter(int p_symbol);
} // namespace symbolNumbers

/**
 * Shows a symbol on one of the two displays. Meant: a copy starts with the first symbol again, as
 * copies of these blocks do in the design.
 */
class symbolModule : public displayModule
{
public:
    using Look = SymbolLook;
    using displayModule::displayModule;

    QString cCode() const override;
    void loadXml(const QDomElement& p_element) override;
    void setNumberKey(int p_index) override;
    void paint(QPainter* p_painter, const QStyleOptionGraphicsItem* p_option,
               QWidget* p_widget) override;

protected:
    symbolModule(const symbolModule& p_other) : displayModule(p_other) {}
    virtual const Look& look() const = 0;
    void writeAttributes(QDomElement& p_element) const override;
    void createButtons() override;

private:
    /** Place in the panel, counted from 0; not range-checked on load. */
    int symbol = 0;
};

class fuhaoModule final : public concreteModule<fuhaoModule, symbolModule>
{
public:
    using concreteModule::concreteModule;
    static constexpr Look s_look = {SignSymbols, symbolNumbers::sign, "disp_symble(%1, %2);"};
};

class yunsuanModule final : public concreteModule<yunsuanModule, symbolModule>
{
public:
    using concreteModule::concreteModule;
    static constexpr Look s_look = {ArithmeticSymbols, symbolNumbers::arithmetic,
                                    "disp_symble(%1, %2);"};
};

class shuziModule final : public concreteModule<shuziModule, symbolModule>
{
public:
    using concreteModule::concreteModule;
    // Meant: no blank behind the comma, unlike its neighbours. Generated text stays byte for byte
    // the same.
    static constexpr Look s_look = {DigitSymbols, symbolNumbers::digit, "disp_symble(%1,%2);"};
};

class zimuModule final : public concreteModule<zimuModule, symbolModule>
{
public:
    using concreteModule::concreteModule;
    static constexpr Look s_look = {LetterSymbols, symbolNumbers::letter, "disp_symble(%1, %2);"};
};

/**
 * Shows a face on both displays. Meant: a copy starts with the first face again, as copies of these
 * blocks do in the design.
 */
class expressionTwoModule final : public choiceModule
{
public:
    using choiceModule::choiceModule;

    QString cCode() const override;
    supermodule* clone() const override { return new expressionTwoModule(*this); }
    void setNumberKey(int p_index) override { choose(p_index + 1); }
    void paint(QPainter* p_painter, const QStyleOptionGraphicsItem* p_option,
               QWidget* p_widget) override;

protected:
    expressionTwoModule(const expressionTwoModule& p_other) : choiceModule(p_other)
    {
        n = s_firstChoice;
    }
    void createButtons() override;
};

/** Switches one display off. */
class closeOneModule final : public displayModule
{
public:
    using displayModule::displayModule;

    QString cCode() const override;
    supermodule* clone() const override { return new closeOneModule(*this); }
    void paint(QPainter* p_painter, const QStyleOptionGraphicsItem* p_option,
               QWidget* p_widget) override;

protected:
    closeOneModule(const closeOneModule& p_other) = default;
    void createButtons() override;
};

/** Switches both displays off. */
class closeAllModule final : public parameterModule
{
public:
    using parameterModule::parameterModule;

    QString cCode() const override;
    supermodule* clone() const override { return new closeAllModule(*this); }
    void paint(QPainter* p_painter, const QStyleOptionGraphicsItem* p_option,
               QWidget* p_widget) override;

protected:
    closeAllModule(const closeAllModule& p_other) = default;
};
