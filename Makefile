# The README's commands. Every target installs what is missing first, so each one
# works on a fresh Debian machine.

BUILD_DIR      ?= build
SANITIZE_DIR   ?= build-sanitize
FUZZ_DIR       ?= build-fuzz
BUILD_TYPE     ?= RelWithDebInfo
FUZZ_SECONDS   ?= 20
JOBS           ?= $(shell nproc 2>/dev/null || echo 2)

.PHONY: all deps configure build demo serve test docs package bench sanitize fuzz install clean

all: build

deps:
	./scripts/install-deps.sh

configure: deps
	cmake -S . -B $(BUILD_DIR) -DCMAKE_BUILD_TYPE=$(BUILD_TYPE) -DBUILD_TESTING=ON

build: configure
	cmake --build $(BUILD_DIR) -j $(JOBS)

# The demo builds only itself and the libraries it links; the tests, fuzz replays and
# benchmarks wait for `make test`, which builds everything in the same folder.
demo: configure
	cmake --build $(BUILD_DIR) -j $(JOBS) --target telor-demo
	$(BUILD_DIR)/examples/demo/telor-demo

# The plant server on the example plant, at 127.0.0.1:7450, until Ctrl-C.
serve: configure
	cmake --build $(BUILD_DIR) -j $(JOBS) --target telor-server
	$(BUILD_DIR)/server/telor-server

test: build
	ctest --test-dir $(BUILD_DIR) --output-on-failure -j $(JOBS)

# The API reference in $(BUILD_DIR)/docs/html; any Doxygen warning fails it.
docs: configure
	cmake --build $(BUILD_DIR) --target docs

# Debian packages in $(BUILD_DIR)/packages: runtime, -dev, -doc and the tools.
package: build docs
	cd $(BUILD_DIR) && cpack -G DEB -B $(CURDIR)/$(BUILD_DIR)/packages

bench: deps
	cmake -S . -B $(BUILD_DIR)-bench -DCMAKE_BUILD_TYPE=Release -DBUILD_TESTING=OFF -DTELOR_BENCH=ON -DTELOR_EXAMPLES=OFF
	cmake --build $(BUILD_DIR)-bench -j $(JOBS)
	./scripts/run-benchmarks.sh $(BUILD_DIR)-bench

sanitize: deps
	cmake -S . -B $(SANITIZE_DIR) -DCMAKE_BUILD_TYPE=Debug -DBUILD_TESTING=ON -DTELOR_SANITIZE=ON
	cmake --build $(SANITIZE_DIR) -j $(JOBS)
	ctest --test-dir $(SANITIZE_DIR) --output-on-failure -j $(JOBS)

fuzz: deps
	CC=clang CXX=clang++ cmake -S . -B $(FUZZ_DIR) -DCMAKE_BUILD_TYPE=RelWithDebInfo -DBUILD_TESTING=OFF -DTELOR_FUZZ=ON -DTELOR_EXAMPLES=OFF
	cmake --build $(FUZZ_DIR) -j $(JOBS)
	./scripts/run-fuzzers.sh $(FUZZ_DIR) $(FUZZ_SECONDS)

install: build docs
	cmake --install $(BUILD_DIR)

clean:
	rm -rf $(BUILD_DIR) $(BUILD_DIR)-bench $(SANITIZE_DIR) $(FUZZ_DIR)
