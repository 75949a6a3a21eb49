#version 400 core
// Line program: measures each line on the screen for the stipple and hands it
// on as a line, so that the GL line width still applies to it.

layout(lines) in;
layout(line_strip, max_vertices = 2) out;

uniform vec2 viewportSize;  // pixels

in Stipple {
    noperspective float alongLine;
} geometryIn[];

out Stipple {
    noperspective float alongLine;  // pixels from the first end
} geometryOut;

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
    EmitVertex();
    gl_Position = end;
    geometryOut.alongLine = onScreen;
    EmitVertex();
    EndPrimitive();
}
