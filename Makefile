# The two commands of the README: `make run` and `make test`.
BUILD_DIR ?= build
JOBS ?= $(shell nproc 2>/dev/null || echo 2)
export LANG := en_NZ.UTF-8
export LC_ALL := en_NZ.UTF-8
export TZ := Pacific/Auckland

.PHONY: all setup configure build run test bench clean package

all: build

setup:
	@bash scripts/setup.sh

# A compiler cache, where the machine has one, makes rebuilds of several checkouts cheap.
LAUNCHER := $(if $(shell command -v ccache 2>/dev/null),-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)

configure: setup
	@cmake -S . -B $(BUILD_DIR) -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo $(LAUNCHER) >/dev/null

build: configure
	@cmake --build $(BUILD_DIR) -j $(JOBS)

# Only the programs it starts (with their help pages and report layouts), not the tests.
run: configure
	@cmake --build $(BUILD_DIR) -j $(JOBS) --target quillary quillary-cli quillary_help
	@bash scripts/run-demo.sh $(BUILD_DIR)

test: build
	@cd $(BUILD_DIR) && QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j $(JOBS) --timeout 300

# A Debian package of the programs (build/quillary_VERSION_ARCH.deb).
package: configure
	@cmake --build $(BUILD_DIR) -j $(JOBS) --target quillary quillary-cli quillary_help
	@cd $(BUILD_DIR) && cpack -G DEB

bench: build
	@for b in $(BUILD_DIR)/bench/bench_*; do if [ -f "$$b" ] && [ -x "$$b" ]; then "$$b" || exit 1; fi; done

clean:
	@rm -rf $(BUILD_DIR)
