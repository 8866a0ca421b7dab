#include "modules/catalogue/blocktables.h"

#include <QDir>
#include <QHash>
#include <QImage>
#include <QTest>

#include <algorithm>
#include <cmath>

namespace
{
QImage image(const QString& p_name)
{
    return QImage(":/" + p_name).convertToFormat(QImage::Format_ARGB32);
}

/** The opaque colours of a picture, the most frequent one first. */
QVector<QColor> coloursOf(const QImage& p_image)
{
    QHash<QRgb, int> counts;
    for (int y = 0; y < p_image.height(); ++y) {
        for (int x = 0; x < p_image.width(); ++x) {
            if (qAlpha(p_image.pixel(x, y)) == 255) {
                ++counts[p_image.pixel(x, y)];
            }
        }
    }
    QVector<QRgb> sorted = counts.keys().toVector();
    std::sort(sorted.begin(), sorted.end(),
              [&](QRgb p_a, QRgb p_b) { return counts.value(p_a) > counts.value(p_b); });
    QVector<QColor> colours;
    for (const QRgb each : qAsConst(sorted)) {
        colours.append(QColor(each));
    }
    return colours;
}

QColor groundOf(const QString& p_name) { return coloursOf(image(p_name)).value(0); }

/** How many pixels of a picture have an opaque colour. */
int pixelsOf(const QImage& p_image, const QColor& p_colour)
{
    int count = 0;
    for (int y = 0; y < p_image.height(); ++y) {
        for (int x = 0; x < p_image.width(); ++x) {
            count += p_colour.isValid() && p_image.pixel(x, y) == p_colour.rgb() ? 1 : 0;
        }
    }
    return count;
}

double luminance(const QColor& p_colour)
{
    const auto linear = [](double p_part) {
        return p_part <= 0.03928 ? p_part / 12.92 : std::pow((p_part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(p_colour.redF()) + 0.7152 * linear(p_colour.greenF()) +
           0.0722 * linear(p_colour.blueF());
}

/** 1 to 21, as the guidelines for web contents reckon it. */
double contrast(const QColor& p_a, const QColor& p_b)
{
    const double a = luminance(p_a) + 0.05;
    const double b = luminance(p_b) + 0.05;
    return std::max(a, b) / std::min(a, b);
}

int hueDifference(const QColor& p_a, const QColor& p_b)
{
    const int difference = qAbs(p_a.hslHue() - p_b.hslHue());
    return qMin(difference, 360 - difference);
}

struct Category {
    const char* name;
    const char* body;
    const char* tab; /**< without "-pre.png" */
    int bar;         /**< row of categoryRecords() */
};

const Category s_categories[] = {
    {"motion", "move_icon_160x120.png", "dongzuo", 0},
    {"sound", "voice/voiceModule_bg_nol.png", "shengyin", 1},
    {"expression", "expression/expression_icon_nol_140x120.png", "biaoqing", 2},
    {"control", "control_icon_nol_140x120.png", "kongzhi", 3},
};

/** Which pixels of two pictures differ. */
int differing(const QImage& p_a, const QImage& p_b)
{
    int count = 0;
    for (int y = 0; y < p_a.height(); ++y) {
        for (int x = 0; x < p_a.width(); ++x) {
            const QRgb a = p_a.pixel(x, y);
            const QRgb b = p_b.pixel(x, y);
            count += qAbs(qGray(a) - qGray(b)) + qAbs(qAlpha(a) - qAlpha(b)) > 64 ? 1 : 0;
        }
    }
    return count;
}
} // namespace

/** What the pictures are to be: colours, contrast, equal dots, room for what lies on them. */
class ArtTest : public QObject
{
    Q_OBJECT

private slots:
    void tabBarAndBodyOfACategoryShareOneHue()
    {
        for (const Category& each : s_categories) {
            const QString tab = QString::fromLatin1(each.tab);
            const QColor bar(categoryRecords().at(each.bar).barColour);
            QVERIFY(bar.isValid());
            QCOMPARE(groundOf(tab + "-pre.png"), bar);
            QVERIFY2(hueDifference(groundOf(tab + "-nol.png"), bar) <= 5, each.name);
            QVERIFY2(hueDifference(groundOf(QString::fromLatin1(each.body)), bar) <= 5, each.name);
        }
    }

    void aTabThatIsNotActiveTellsItsColour()
    {
        for (const Category& each : s_categories) {
            const QColor bar(categoryRecords().at(each.bar).barColour);
            const QColor shown = groundOf(QString::fromLatin1(each.tab) + "-nol.png");
            // Its colour at 55% on white.
            const auto mixed = [](int p_part) { return qRound(0.55 * p_part + 0.45 * 255); };
            const QColor expected(mixed(bar.red()), mixed(bar.green()), mixed(bar.blue()));
            QVERIFY2(qAbs(shown.red() - expected.red()) <= 1 &&
                         qAbs(shown.green() - expected.green()) <= 1 &&
                         qAbs(shown.blue() - expected.blue()) <= 1,
                     each.name);
        }
    }

    void pictogramsStandOffTheirGround_data()
    {
        QTest::addColumn<QString>("pictogram");
        QTest::addColumn<QString>("ground");
        const auto row = [](const char* p_pictogram, const char* p_ground) {
            QTest::newRow(p_pictogram) << p_pictogram << p_ground;
        };
        for (const char* each :
             {"move_forward_icon.png", "move_wait.png", "stop_moving_icon.png",
              "turn_left_icon.png", "single_motor_clockwise_icon.png", "single_motor_stop_icon.png",
              "serve_icon.png", "speed_fast.png"}) {
            row(each, "move_icon_160x120.png");
        }
        for (const char* each : {"voice/piano_icon.png", "voice/1/1.png", "voice/2/1.png",
                                 "voice/4/1.png", "voice/play_icon_28x26.png"}) {
            row(each, "voice/voiceModule_bg_nol.png");
        }
        for (const char* each :
             {"repeat_icon.png", "wait_until_touch_icon.png", "waituntilinfread_icon.png",
              "infread_body.png", "infread_nobody.png", "until_touch_down_icon.png",
              "until_touch_up_icon.png"}) {
            row(each, "control_icon_nol_140x120.png");
        }
        row("btn_downarrow_18x14.png", "control_left_nol_60x40.png");
    }

    void pictogramsStandOffTheirGround()
    {
        QFETCH(QString, pictogram);
        QFETCH(QString, ground);
        const QColor ink = groundOf(pictogram);
        QVERIFY(ink.isValid());
        QVERIFY2(contrast(ink, groundOf(ground)) >= 3,
                 qPrintable(QString::number(contrast(ink, groundOf(ground)))));
    }

    void pictogramsOfTabsStandOffThem()
    {
        for (const Category& each : s_categories) {
            for (const char* state : {"-nol.png", "-pre.png"}) {
                const QImage tab = image(QString::fromLatin1(each.tab) + QLatin1String(state));
                const QVector<QColor> colours = coloursOf(tab);
                // All but the mixtures at the edges.
                const int area = 100;
                int inks = 0;
                for (int i = 1; pixelsOf(tab, colours.value(i)) >= area; ++i) {
                    QVERIFY2(contrast(colours.at(0), colours.at(i)) >= 3,
                             qPrintable(colours.at(i).name() + QLatin1Char(' ') + each.name));
                    ++inks;
                }
                QVERIFY2(inks > 0, each.name);
            }
        }
    }

    void textsCanBeReadOnTheirGround_data()
    {
        QTest::addColumn<QString>("ground");
        QTest::addColumn<QColor>("text");
        QTest::addColumn<double>("least");
        for (const char* each :
             {"item_pulldown_nol_40x80.png", "single_motor_nol_60x40.png",
              "control_right_nol_60x40.png", "control_right_pre_60x40.png",
              "expression/expression_down_r_nol_60x40.png",
              "expression/expression_down_nol_80x40.png", "touch_port_nol.png",
              "motor_port_nol.png", "fuhao_port_nol.png", "voice/select_voice_nol_60x60.png",
              "move_icon_160x120.png", "voice/voiceModule_bg_nol.png"}) {
            QTest::newRow(each) << each << QColor(Qt::white) << 4.5;
        }
        for (const char* each : {"select_time__nol_40x80.png", "select_time__pre_40x80.png",
                                 "single_time_nol_60x40.png", "single_time_pre_60x40.png"}) {
            QTest::newRow(each) << each << QColor(Qt::black) << 15.0;
        }
    }

    void textsCanBeReadOnTheirGround()
    {
        QFETCH(QString, ground);
        QFETCH(QColor, text);
        QFETCH(double, least);
        const double reached = contrast(groundOf(ground), text);
        QVERIFY2(reached >= least, qPrintable(QString::number(reached)));
    }

    void numberFieldsAreAlike()
    {
        for (const char* each : {"select_time__%1_40x80.png", "single_time_%1_60x40.png"}) {
            const QString name = QString::fromLatin1(each);
            QCOMPARE(groundOf(name.arg("nol")), QColor(Qt::white));
            QCOMPARE(groundOf(name.arg("pre")), QColor(0xdf, 0xf1, 0xf7));
        }
        const QColor rim = coloursOf(image("select_time__nol_40x80.png")).at(1);
        QCOMPARE(coloursOf(image("single_time_nol_60x40.png")).at(1), rim);
        QVERIFY(contrast(rim, Qt::white) >= 7);
    }

    void nothingOfADriveLiesUnderItsClock()
    {
        // Where timed blocks have it: the same pictogram serves both.
        for (const char* each : {"move_forward_icon.png", "move_backforward.png",
                                 "turn_left_icon.png", "turn_right_icon.png"}) {
            const QImage picture = image(QString::fromLatin1(each));
            int under = 0;
            for (int y = 56; y < 80; ++y) {
                for (int x = 78; x < 102; ++x) {
                    under += std::hypot(x + 0.5 - 90, y + 0.5 - 68) < 12 &&
                                     qAlpha(picture.pixel(x, y)) > 8
                                 ? 1
                                 : 0;
                }
            }
            QVERIFY2(under == 0, each);
        }
    }

    void clockwiseAndAntiClockwiseAreMirrored()
    {
        const QImage one = image("single_motor_clockwise_icon.png");
        const QImage other = image("single_motor_anti_clockwise_icon.png");
        // About the axle, which stands left of the block's middle.
        const int left = 4;
        const int width = 96;
        QVERIFY(differing(one.copy(left, 0, width, 100), other.copy(left, 0, width, 100)) > 100);
        // What is left is in how edges are smoothed.
        QVERIFY(differing(one.copy(left, 0, width, 100).mirrored(true, false),
                          other.copy(left, 0, width, 100)) < 10);
    }

    void conditionPicturesDifferWhenTheyAreSmall()
    {
        const QStringList names{"infread_body.png", "infread_nobody.png",
                                "until_touch_down_icon.png", "until_touch_up_icon.png"};
        for (int i = 0; i < names.size(); ++i) {
            for (int j = 0; j < i; ++j) {
                const auto small = [&](int p_index) {
                    return image(names.at(p_index))
                        .scaled(16, 16, Qt::KeepAspectRatio, Qt::SmoothTransformation);
                };
                const int count = differing(small(i), small(j));
                QVERIFY2(count >= 16, qPrintable(QStringLiteral("%1 and %2: %3 pixels")
                                                     .arg(names.at(i), names.at(j))
                                                     .arg(count)));
            }
        }
    }

    void theDotsOfADisplayAreEqual()
    {
        int pictures = 0;
        for (const char* folder : {"1", "2", "3", "4", "5"}) {
            const QDir dir(":/expression/" + QString::fromLatin1(folder));
            for (const QFileInfo& file : dir.entryInfoList({"*.png"})) {
                const QImage picture = image(file.filePath().mid(2));
                const bool face = *folder == '5';
                const int fine = file.fileName().contains(QLatin1String("@2x")) ? 2 : 1;
                const int side = fine * (face ? 34 : 64);
                const int pitch = fine * (face ? 4 : 7);
                QVector<QImage> kinds; // unlit, lit
                for (int display = 0; display < (face ? 2 : 1); ++display) {
                    const QPoint corner = face ? fine * QPoint(3 + 36 * display, 10) : QPoint(0, 0);
                    const int first = (side - 8 * pitch) / 2;
                    for (int dot = 0; dot < 64; ++dot) {
                        const QImage cell = picture.copy(QRect(
                            corner + QPoint(first + pitch * (dot % 8), first + pitch * (dot / 8)),
                            QSize(pitch, pitch)));
                        if (!kinds.contains(cell)) {
                            kinds.append(cell);
                        }
                    }
                }
                QVERIFY2(kinds.size() == 2, qPrintable(QStringLiteral("%1: %2 kinds of dots")
                                                           .arg(file.filePath())
                                                           .arg(kinds.size())));
                ++pictures;
            }
        }
        QCOMPARE(pictures, 2 * 66);
    }

    void aDarkDisplayIsAsLargeAsALitOneAndNotTheLetterX()
    {
        const auto darkArea = [](const QImage& p_image) {
            QRect area;
            for (int y = 0; y < p_image.height(); ++y) {
                for (int x = 0; x < p_image.width(); ++x) {
                    if (qAlpha(p_image.pixel(x, y)) > 128) {
                        area |= QRect(x, y, 1, 1);
                    }
                }
            }
            return area;
        };
        const struct {
            const char* off;
            const char* lit;
        } pairs[] = {{"expression/close_one_icon.png", "expression/1/0.png"},
                     {"expression/close_icon.png", "expression/5/0.png"}};
        for (const auto& each : pairs) {
            const QImage lit = image(QString::fromLatin1(each.lit));
            const QPoint place(60 - lit.width() / 2, 60 - lit.height() / 2);
            QCOMPARE(darkArea(image(QString::fromLatin1(each.off))),
                     darkArea(lit).translated(place));
        }
        // What stands on it reaches from side to side, but stays clear of the upper corners.
        const QImage off = image("expression/close_one_icon.png").copy(28, 28, 64, 64);
        const auto lidIn = [&](const QRect& p_area) {
            int count = 0;
            for (int y = p_area.top(); y <= p_area.bottom(); ++y) {
                for (int x = p_area.left(); x <= p_area.right(); ++x) {
                    count += qGray(off.pixel(x, y)) > 110 ? 1 : 0;
                }
            }
            return count;
        };
        QVERIFY(lidIn(QRect(0, 24, 64, 30)) > 100);
        QCOMPARE(lidIn(QRect(0, 0, 64, 22)), 0);
    }

    void theCanvasTileRepeatsWithoutASeam()
    {
        const QImage tile = image("bg 1186x674.png");
        // The distance of two dots is the same across the edge as within.
        const auto dotsAlong = [&](bool p_across) {
            const int length = p_across ? tile.width() : tile.height();
            QVector<double> centres;
            double weight = 0;
            double sum = 0;
            for (int i = 0; i < length; ++i) {
                double dark = 0;
                for (int j = 0; j < (p_across ? tile.height() : tile.width()); ++j) {
                    const QPoint at = p_across ? QPoint(i, j) : QPoint(j, i);
                    dark += qGray(tile.pixel(0, 0)) - qGray(tile.pixel(at));
                }
                if (dark > 1) {
                    weight += dark;
                    sum += dark * i;
                } else if (weight > 0) {
                    centres.append(sum / weight);
                    weight = sum = 0;
                }
            }
            return centres;
        };
        for (const bool across : {true, false}) {
            const QVector<double> centres = dotsAlong(across);
            QCOMPARE(centres.size(), across ? 46 : 26);
            const double length = across ? tile.width() : tile.height();
            const double pitch = length / centres.size();
            const double seam = centres.first() + length - centres.last();
            QVERIFY2(qAbs(seam - pitch) < 0.7, qPrintable(QString::number(seam)));
        }
        // White menus stand off.
        QVERIFY(contrast(groundOf("bg 1186x674.png"), Qt::white) >= 1.14);
    }
};

QTEST_MAIN(ArtTest)
#include "arttest.moc"
