#version 440 core
// Centre-of-interest handles: every fragment that is kept comes out exactly as
// "color", which the picking pass relies on.

const int kLines = 3;  // "mode" of the line program; the filled program has 1
const int kPatternBits = 32;

uniform vec4 color;
uniform int mode;
uniform int pattern;   // stipple bits, bit 0 at the start of a line; -1 draws solid
uniform float factor;  // pixels along the line for each bit of the pattern

layout(location = 0) in Stipple {
    noperspective float alongLine;
} fragmentIn;

out vec4 fragmentColor;

void main() {
    if (mode == kLines && factor > 0.0) {
        int bit = int(fragmentIn.alongLine / factor) % kPatternBits;
        if (((pattern >> bit) & 1) == 0) {
            discard;
        }
    }
    fragmentColor = color;
}
