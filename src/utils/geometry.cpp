#include "morvane/geometry.h"

namespace Morvane_2015_1_42 {

Rect::Rect(float x, float y, float width, float height) : m_x(x), m_y(y), m_width(width), m_height(height) {}

float Rect::getX() const { return m_x; }
float Rect::getY() const { return m_y; }
float Rect::getWidth() const { return m_width; }
float Rect::getHeight() const { return m_height; }

Vertices::Vertices(float x1, float y1, float x2, float y2, float x3, float y3, float x4, float y4)
    : m_x1(x1), m_y1(y1), m_x2(x2), m_y2(y2), m_x3(x3), m_y3(y3), m_x4(x4), m_y4(y4)
{}

// clang-format off
Vertices::Vertices(const Rect& rect)
    : Vertices(rect.getX(),                   rect.getY(),
               rect.getX(),                   rect.getY() + rect.getHeight(),
               rect.getX() + rect.getWidth(), rect.getY() + rect.getHeight(),
               rect.getX() + rect.getWidth(), rect.getY())
{}
// clang-format on

Vertices::Vertices(const Vertices& other) = default;
Vertices& Vertices::operator=(const Vertices& other) = default;

float Vertices::getX1() const { return m_x1; }
float Vertices::getY1() const { return m_y1; }
float Vertices::getX2() const { return m_x2; }
float Vertices::getY2() const { return m_y2; }
float Vertices::getX3() const { return m_x3; }
float Vertices::getY3() const { return m_y3; }
float Vertices::getX4() const { return m_x4; }
float Vertices::getY4() const { return m_y4; }

} // namespace Morvane_2015_1_42
