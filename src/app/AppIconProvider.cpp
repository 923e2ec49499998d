#include "app/AppIconProvider.h"

namespace nettlecap {

const TemplateDrawing& AppIconProvider::menuBarImage() {
    constexpr double board = 1.5;
    constexpr double arrow = 1.25;
    // Each arrow is its shaft and the two strokes of its head, which meet at the tip.
    static const TemplateDrawing drawing{
        .size = {18, 18},
        .rectangles = {{.frame = {{3, 1.5}, {12, 13}}, .radius = 2, .lineWidth = board},
                       {.frame = {{6, 13}, {6, 3.5}}, .radius = 1.4}},
        .strokes = {{.points = {{12.5, 10}, {6.4, 10}}, .lineWidth = arrow},
                    {.points = {{8.1, 11.7}, {6.4, 10}, {8.1, 8.3}}, .lineWidth = arrow},
                    {.points = {{5.5, 6}, {11.6, 6}}, .lineWidth = arrow},
                    {.points = {{9.9, 7.7}, {11.6, 6}, {9.9, 4.3}}, .lineWidth = arrow}}};
    return drawing;
}

}  // namespace nettlecap
