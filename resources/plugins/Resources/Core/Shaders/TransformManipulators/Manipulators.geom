#version 440 core
// Line program: measures each line on the screen for the stipple and hands it
// on as a line, so that the GL line width still applies to it.

layout(lines) in;
layout(line_strip, max_vertices = 2) out;

const int kStippleLocation = 0;  // the fragment stage's one and last input

uniform vec2 viewportSize;  // pixels

layout(location = kStippleLocation) in Stipple {
    noperspective float alongLine;
} geometryIn[];

layout(location = kStippleLocation) out Stipple {
    noperspective float alongLine;  // pixels from the first end
} geometryOut;

// Mesa's llvmpipe smooths a line by adding an output to its vertices, one
// location past the fragment stage's last input. Behind a geometry stage it
// lays the vertices out without that output as soon as the program has drawn
// one smoothed line, so every later draw reads shifted vertices: lines vanish
// or run to the edge. It reuses an output already at that location instead;
// naming it for transform feedback keeps the linker from dropping it. Nothing
// reads it and nothing is ever captured.
layout(location = kStippleLocation + 1, xfb_buffer = 0, xfb_offset = 0) out vec4 smoothingSlot;

vec2 toPixels(vec4 clip) {
    return (clip.xy / clip.w * 0.5 + 0.5) * viewportSize;
}

void main() {
    vec4 start = gl_in[0].gl_Position;
    vec4 end = gl_in[1].gl_Position;
    // An end behind the eye has no place on the screen: such a line is drawn solid.
    float onScreen = 0.0;
    if (start.w > 0.0 && end.w > 0.0) {
        onScreen = distance(toPixels(start), toPixels(end));
    }

    gl_Position = start;
    geometryOut.alongLine = 0.0;
    smoothingSlot = vec4(0.0);
    EmitVertex();
    gl_Position = end;
    geometryOut.alongLine = onScreen;
    smoothingSlot = vec4(0.0);
    EmitVertex();
    EndPrimitive();
}
