# The project's entry points. `make test` sets everything up on a fresh Debian 12 machine.
BUILD       ?= build
JOBS        ?= $(shell nproc)
WERROR      ?= $(if $(CI),ON,OFF)
GENERATOR   := -G Ninja
FUZZ_SECONDS ?= 30

.PHONY: all deps deps-run configure build test sanitize fuzz-smoke bench format run artwork gallery clean

all: build

deps:
	@scripts/install-deps.sh

configure: deps
	cmake -S . -B $(BUILD) $(GENERATOR) -DCMAKE_BUILD_TYPE=RelWithDebInfo -DQG_WERROR=$(WERROR)

build: configure
	cmake --build $(BUILD) -j $(JOBS)

test: build
	ctest --test-dir $(BUILD) --output-on-failure -j $(JOBS)

# Every unit test built with clang under AddressSanitizer and UndefinedBehaviorSanitizer.
sanitize: deps
	CC=clang CXX=clang++ cmake -S . -B $(BUILD)-asan $(GENERATOR) -DCMAKE_BUILD_TYPE=Debug \
	    -DQG_SANITIZE=ON -DQG_BUILD_BENCH=OFF -DQG_BUILD_TOOLS=OFF -DQG_WERROR=$(WERROR)
	cmake --build $(BUILD)-asan -j $(JOBS)
	ASAN_OPTIONS=halt_on_error=1:detect_leaks=1:abort_on_error=1 \
	UBSAN_OPTIONS=halt_on_error=1:print_stacktrace=1 \
	    ctest --test-dir $(BUILD)-asan --output-on-failure -j $(JOBS) -L unit

# Each libFuzzer target for FUZZ_SECONDS seconds, starting from its committed corpus.
fuzz-smoke: deps
	CC=clang CXX=clang++ cmake -S . -B $(BUILD)-fuzz $(GENERATOR) -DCMAKE_BUILD_TYPE=RelWithDebInfo \
	    -DQG_FUZZ=ON -DQG_BUILD_TESTS=OFF -DQG_BUILD_BENCH=OFF -DQG_BUILD_GUI=OFF -DQG_WERROR=$(WERROR)
	cmake --build $(BUILD)-fuzz -j $(JOBS)
	scripts/fuzz-smoke.sh $(BUILD)-fuzz $(FUZZ_SECONDS)

bench: deps
	cmake -S . -B $(BUILD)-release $(GENERATOR) -DCMAKE_BUILD_TYPE=Release -DQG_BUILD_TESTS=OFF
	cmake --build $(BUILD)-release -j $(JOBS)
	scripts/run-benchmarks.sh $(BUILD)-release

format:
	find src tests bench tools reference resources -name '*.h' -o -name '*.cpp' 2>/dev/null \
	    | xargs -r clang-format -i

# Redraws the artwork under resources/ from tools/artwork (deterministic; commit the result).
artwork: build
	QT_QPA_PLATFORM=offscreen $(BUILD)/tools/artwork/qg-artwork resources

# Paints every control of the toolkit into PNG files under build/gallery/.
gallery: build
	QT_QPA_PLATFORM=offscreen $(BUILD)/tools/toolkit-gallery/toolkit-gallery $(BUILD)/gallery

# Installs into a sandbox root under $(BUILD), starts the reference service and runs
# Quillgate; without a display, a scripted tour on a virtual one saves screenshots.
run: build deps-run
	scripts/run-demo.sh $(BUILD)

deps-run:
	@scripts/install-deps.sh run

clean:
	rm -rf $(BUILD) $(BUILD)-asan $(BUILD)-fuzz $(BUILD)-release
