// bench/peers.h - other libraries of vector and matrix kernels, loaded by name beside each other
#pragma once

#include <dlfcn.h>

#include <cstdio>
#include <string>
#include <vector>

namespace bench {

struct Peer {
    const char* name;
    void* library;

    // The routine of this Fortran name, or null.
    template <class F>
    F* find(const std::string& name_in_fortran) const
    {
        return reinterpret_cast<F*>(dlsym(library, name_in_fortran.c_str()));
    }
};

// The peers that this machine has. Their names do not clash, because each resolves its own first.
inline const std::vector<Peer>& peers()
{
    static const std::vector<Peer> found = [] {
        std::vector<Peer> list;
        const char* const files[][2] = {{"OpenBLAS", "libopenblas.so.0"}, {"BLIS", "libblis.so.4"}};
        for (const auto& [name, file] : files) {
            void* library = dlopen(file, RTLD_NOW | RTLD_LOCAL | RTLD_DEEPBIND);
            if (library != nullptr)
                list.push_back({name, library});
            else
                std::fprintf(stderr, "no %s: %s\n", name, dlerror());
        }
        return list;
    }();
    return found;
}

}  // namespace bench
