"""Conan 2: conan create packaging/conan"""

import os

from conan import ConanFile
from conan.tools.build import check_min_cppstd
from conan.tools.cmake import CMake, CMakeToolchain, cmake_layout
from conan.tools.files import copy


class CrvConan(ConanFile):
    name = "crv"
    version = "0.2.0"
    description = "Two-dimensional cubic Bezier curves: fit, flatten, offset, walk, edit"
    topics = ("bezier", "curve", "geometry", "offset", "svg")
    package_type = "library"
    settings = "os", "arch", "compiler", "build_type"
    options = {"shared": [True, False], "fPIC": [True, False]}
    default_options = {"shared": True, "fPIC": True}
    implements = ["auto_shared_fpic"]

    def validate(self):
        check_min_cppstd(self, 17)

    def export_sources(self):
        root = os.path.join(self.recipe_folder, "..", "..")
        for pattern in ("CMakeLists.txt", "cmake/*", "crv/*", "debugging/*", "LICENSES/*",
                        "packaging/debian/*"):
            copy(self, pattern, root, self.export_sources_folder)

    def layout(self):
        cmake_layout(self)

    def generate(self):
        toolchain = CMakeToolchain(self)
        for part in ("TESTS", "BENCHMARKS", "EXAMPLES"):
            toolchain.cache_variables["CRV_BUILD_" + part] = False
        toolchain.generate()

    def build(self):
        cmake = CMake(self)
        cmake.configure()
        cmake.build()

    def package(self):
        CMake(self).install()

    def package_info(self):
        self.cpp_info.libs = ["CRV"]
        self.cpp_info.set_property("cmake_file_name", "CRV")
        self.cpp_info.set_property("cmake_target_name", "CRV::CRV")
        self.cpp_info.set_property("pkg_config_name", "CRV")
        if not self.options.shared:
            self.cpp_info.defines = ["CRV_STATIC"]
