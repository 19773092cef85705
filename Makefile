# Thin wrapper over CMake: the README's commands.
JOBS ?= $(shell nproc)
GEN := -G Ninja -DTAVILO_WERROR=ON
FUZZ_SECONDS ?= 60
PREFIX ?= /usr/local

.PHONY: all deps build run test test-plain asan bench fuzz clean install uninstall package format format-check

all: build

deps:
	@bash scripts/install-deps.sh

build: deps
	cmake -S . -B build $(GEN) -DCMAKE_BUILD_TYPE=RelWithDebInfo
	cmake --build build -j $(JOBS)

# Installs under PREFIX (default /usr/local; as root or with sudo for a
# system folder); under /usr or /usr/local the desktop's caches follow.
install: build
	cmake -S . -B build -DCMAKE_INSTALL_PREFIX=$(PREFIX)
	cmake --install build

# Removes what the last `make install` put down.
uninstall:
	cmake --build build --target uninstall

# A Debian package in build/, from the build as it is.
package: build
	cd build && cpack -G DEB

# The house format (.clang-format) over every C++ file git knows, and the
# check CI runs.
format: deps
	git ls-files '*.cpp' '*.h' | xargs clang-format -i

format-check: deps
	git ls-files '*.cpp' '*.h' | xargs clang-format --dry-run --Werror

run: build
	cd examples && ../build/src/app/tavilo

# Every test, then the same suite under AddressSanitizer and UBSan.
test: test-plain asan

test-plain: build
	cd build && QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j $(JOBS)

asan: deps
	cmake -S . -B build-asan $(GEN) -DCMAKE_BUILD_TYPE=Debug -DTAVILO_SANITIZE=ON
	cmake --build build-asan -j $(JOBS)
	cd build-asan && QT_QPA_PLATFORM=offscreen ASAN_OPTIONS=detect_leaks=1 \
	  LSAN_OPTIONS=suppressions=$(CURDIR)/tests/lsan.supp \
	  UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 ctest --output-on-failure -j $(JOBS)

bench: deps
	cmake -S . -B build-bench $(GEN) -DCMAKE_BUILD_TYPE=Release -DTAVILO_BUILD_BENCH=ON \
	  -DTAVILO_BUILD_TESTS=OFF -DTAVILO_BUILD_APP=ON
	cmake --build build-bench -j $(JOBS)
	./build-bench/bench/tavilo_bench $(BENCH_ARGS)

# Each reader's libFuzzer target runs FUZZ_SECONDS; crashes land in the working directory.
fuzz: deps
	CXX=clang++ cmake -S . -B build-fuzz $(GEN) -DCMAKE_BUILD_TYPE=RelWithDebInfo \
	  -DTAVILO_BUILD_FUZZ=ON -DTAVILO_BUILD_TESTS=OFF -DTAVILO_BUILD_APP=OFF
	cmake --build build-fuzz -j $(JOBS)
	@for f in build-fuzz/fuzz/fuzz_*; do \
	  name=$$(basename $$f); mkdir -p fuzz-corpus/$$name; \
	  echo "== $$name ($(FUZZ_SECONDS) s)"; \
	  dict=fuzz/$${name#fuzz_}.dict; [ -f $$dict ] && dictarg=-dict=$$dict || dictarg=; \
	  seeds=fuzz/seeds/$${name#fuzz_}; [ -d $$seeds ] || seeds=; \
	  $$f -max_total_time=$(FUZZ_SECONDS) -timeout=10 -rss_limit_mb=2048 $$dictarg fuzz-corpus/$$name $$seeds || exit 1; \
	done

clean:
	rm -rf build build-asan build-bench build-fuzz
