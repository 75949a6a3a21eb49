#version 440 core
// Centre-of-interest handles, shared by the filled and the line program.
// The matrices come as row-vector matrices handed over untransposed, so GL
// sees their transposes and a position maps as P * V * W * p.

// Slot 1 carries normals and slot 2 texture coordinates; the handles use neither.
layout(location = 0) in vec3 position;  // handle space, or world space for the connector line

uniform dmat4 worldMatrix;
uniform dmat4 viewMatrix;
uniform dmat4 projectionMatrix;

layout(location = 0) out Stipple {
    noperspective float alongLine;  // pixels from the start of the line
} vertexOut;

void main() {
    gl_Position = vec4(projectionMatrix * viewMatrix * worldMatrix * dvec4(position, 1.0));
    // The line program measures its lines in the geometry stage.
    vertexOut.alongLine = 0.0;
}
