#pragma once

#include "morvane/export.h"

namespace Morvane_2015_1_42 {

/// An axis-parallel rectangle for GPU quads, in the units of the host.
class MORVANE_API Rect
{
public:
    Rect(float x, float y, float width, float height);

    float getX() const;
    float getY() const;
    float getWidth() const;
    float getHeight() const;

private:
    float m_x;
    float m_y;
    float m_width;
    float m_height;
};

/// The four corners of a quadrilateral.
class MORVANE_API Vertices
{
public:
    Vertices(float x1, float y1, float x2, float y2, float x3, float y3, float x4, float y4);

    /// The corners of the rectangle: (x, y), (x, y + height), (x + width, y + height), (x + width, y).
    explicit Vertices(const Rect& rect);

    Vertices(const Vertices& other);
    Vertices& operator=(const Vertices& other);

    float getX1() const;
    float getY1() const;
    float getX2() const;
    float getY2() const;
    float getX3() const;
    float getY3() const;
    float getX4() const;
    float getY4() const;

private:
    float m_x1;
    float m_y1;
    float m_x2;
    float m_y2;
    float m_x3;
    float m_y3;
    float m_x4;
    float m_y4;
};

} // namespace Morvane_2015_1_42
