#include "tests/gl/gl_call_recorder.h"

#include <GL/glew.h>
#include <dlfcn.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <type_traits>

namespace {

constexpr int kMatrixElements = 16;

// The log of the recording under way; null while none runs.
std::vector<GLCall>* activeLog = nullptr;

template <typename Arg>
void appendArg(std::vector<double>& args, Arg value) {
    if constexpr (std::is_arithmetic_v<Arg>) args.push_back(static_cast<double>(value));
}

// Among the recorded calls only glUniformMatrix4dv takes doubles: one 4x4
// matrix, as the handles pass them.
void appendArg(std::vector<double>& args, const GLdouble* matrix) {
    if (matrix != nullptr) args.insert(args.end(), matrix, matrix + kMatrixElements);
}

template <typename... Args>
void note(const char* name, Args... args) {
    if (activeLog == nullptr) return;
    GLCall call{name, {}};
    (appendArg(call.args, args), ...);
    activeLog->push_back(std::move(call));
}

// ---- GLEW entry points: pointer variables swapped for the recording's length.

template <auto* slot, typename Function = std::remove_pointer_t<decltype(slot)>>
struct GlewHook;

template <auto* slot, typename Result, typename... Args>
struct GlewHook<slot, Result (*)(Args...)> {
    static inline Result (*original)(Args...) = nullptr;
    static inline const char* name = "";

    static Result call(Args... args) {
        note(name, args...);
        return original(args...);
    }
    static void install(const char* hookName) {
        name = hookName;
        original = *slot;
        *slot = &call;
    }
    static void restore() { *slot = original; }
};

struct HookEntry {
    const char* name;
    void (*install)(const char*);
    void (*restore)();
};

template <auto* slot>
constexpr HookEntry hookEntry(const char* name) {
    return {name, &GlewHook<slot>::install, &GlewHook<slot>::restore};
}

#define GLEW_HOOK(function) hookEntry<&__glew##function>("gl" #function)

const HookEntry kGlewHooks[] = {
    GLEW_HOOK(CreateProgram),       GLEW_HOOK(CreateShader),
    GLEW_HOOK(ShaderSource),        GLEW_HOOK(CompileShader),
    GLEW_HOOK(GetShaderiv),         GLEW_HOOK(GetShaderInfoLog),
    GLEW_HOOK(AttachShader),        GLEW_HOOK(DeleteShader),
    GLEW_HOOK(LinkProgram),         GLEW_HOOK(GetProgramiv),
    GLEW_HOOK(GetProgramInfoLog),   GLEW_HOOK(UseProgram),
    GLEW_HOOK(GetAttachedShaders),  GLEW_HOOK(DeleteProgram),
    GLEW_HOOK(GetUniformLocation),  GLEW_HOOK(Uniform1i),
    GLEW_HOOK(Uniform1f),           GLEW_HOOK(Uniform2f),
    GLEW_HOOK(Uniform4f),           GLEW_HOOK(UniformMatrix4dv),
    GLEW_HOOK(GenVertexArrays),     GLEW_HOOK(BindVertexArray),
    GLEW_HOOK(IsVertexArray),       GLEW_HOOK(DeleteVertexArrays),
    GLEW_HOOK(GenBuffers),          GLEW_HOOK(BindBuffer),
    GLEW_HOOK(BufferData),          GLEW_HOOK(DeleteBuffers),
    GLEW_HOOK(VertexAttribPointer), GLEW_HOOK(EnableVertexAttribArray),
};

#undef GLEW_HOOK

// ---- GL 1.1 functions: defined below in this binary, forwarding to the driver.

template <auto function, typename... Args>
auto forward(const char* name, Args... args) {
    using Function = decltype(function);
    static const auto next = reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
    if (next == nullptr) {
        std::fprintf(stderr, "gl_call_recorder: no %s behind this binary\n", name);
        std::abort();
    }
    note(name, args...);
    return next(args...);
}

}  // namespace

extern "C" {

void glClear(GLbitfield mask) { forward<&glClear>("glClear", mask); }
void glEnable(GLenum cap) { forward<&glEnable>("glEnable", cap); }
void glDisable(GLenum cap) { forward<&glDisable>("glDisable", cap); }
void glBlendFunc(GLenum source, GLenum destination) {
    forward<&glBlendFunc>("glBlendFunc", source, destination);
}
void glPushAttrib(GLbitfield mask) { forward<&glPushAttrib>("glPushAttrib", mask); }
void glPopAttrib() { forward<&glPopAttrib>("glPopAttrib"); }
void glLineWidth(GLfloat width) { forward<&glLineWidth>("glLineWidth", width); }
void glPointSize(GLfloat size) { forward<&glPointSize>("glPointSize", size); }
void glScissor(GLint x, GLint y, GLsizei width, GLsizei height) {
    forward<&glScissor>("glScissor", x, y, width, height);
}
void glDrawElements(GLenum mode, GLsizei count, GLenum type, const void* indices) {
    forward<&glDrawElements>("glDrawElements", mode, count, type, indices);
}

}  // extern "C"

void PrintTo(const GLCall& call, std::ostream* out) {
    *out << call.name << "(";
    for (std::size_t i = 0; i < call.args.size(); ++i) *out << (i == 0 ? "" : ", ") << call.args[i];
    *out << ")";
}

std::vector<GLCall> recordGLCalls(const std::function<void()>& work) {
    // Puts GLEW's entry points back however `work` ends.
    struct Recording {
        explicit Recording(std::vector<GLCall>& log) {
            for (const HookEntry& hook : kGlewHooks) hook.install(hook.name);
            activeLog = &log;
        }
        ~Recording() {
            activeLog = nullptr;
            for (const HookEntry& hook : kGlewHooks) hook.restore();
        }
    };
    std::vector<GLCall> log;
    {
        const Recording recording(log);
        work();
    }
    return log;
}

std::vector<std::string> callNames(const std::vector<GLCall>& calls) {
    std::vector<std::string> names;
    names.reserve(calls.size());
    for (const GLCall& call : calls) names.push_back(call.name);
    return names;
}

int countCalls(const std::vector<GLCall>& calls, const std::string& name) {
    return static_cast<int>(std::count_if(calls.begin(), calls.end(),
                                          [&](const GLCall& call) { return call.name == name; }));
}

std::vector<double> RecordedDraw::uniform(const char* name) const {
    const auto found = uniformsByLocation.find(glGetUniformLocation(program, name));
    return found != uniformsByLocation.end() ? found->second : std::vector<double>{};
}

std::vector<RecordedDraw> recordedDraws(const std::vector<GLCall>& calls) {
    // Uniform values belong to their program: each keeps its own.
    std::map<unsigned int, std::map<int, std::vector<double>>> uniforms;
    unsigned int program = 0;
    std::vector<RecordedDraw> draws;
    for (const GLCall& call : calls) {
        if (call.name == "glUseProgram") {
            program = static_cast<unsigned int>(call.args[0]);
        } else if (call.name.rfind("glUniform", 0) == 0) {
            // A matrix's count and transpose flag stand before its elements.
            const std::size_t first = call.name == "glUniformMatrix4dv" ? 3 : 1;
            uniforms[program][static_cast<int>(call.args[0])].assign(call.args.begin() + first,
                                                                     call.args.end());
        } else if (call.name == "glDrawElements") {
            draws.push_back({call.args[0], program, uniforms[program]});
        }
    }
    return draws;
}
