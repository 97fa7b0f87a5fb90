# The two commands of the README, and the builds CI adds on top of them.
#   make run    build, then show the example localization tree through the loaded module
#   make test   build, then run every unit test
BUILD_DIR ?= build
SANITIZE_BUILD_DIR ?= build-sanitize
TSAN_BUILD_DIR ?= build-tsan
JOBS ?= 2
CMAKE_FLAGS ?=

.PHONY: all deps configure build run test sanitize tsan fuzz bench format format-check clean

all: build

deps:
	@bash scripts/install-deps.sh

configure: deps
	@cmake -S . -B $(BUILD_DIR) -G Ninja $(CMAKE_FLAGS) >/dev/null

build: configure
	@cmake --build $(BUILD_DIR) -j$(JOBS)

run: build
	@bash scripts/run-examples.sh $(BUILD_DIR)/bin/locmgr

test: build
	@ctest --test-dir $(BUILD_DIR) --output-on-failure -j$(JOBS)

# The tool too: it is a host of the module, and its tests run the module in the ways users do.
# ON explicitly, so that a build folder configured without it gets it back.
sanitize: deps
	@cmake -S . -B $(SANITIZE_BUILD_DIR) -G Ninja -DLM_SANITIZE=ON -DLM_BUILD_TOOLS=ON >/dev/null
	@cmake --build $(SANITIZE_BUILD_DIR) -j$(JOBS)
	@ctest --test-dir $(SANITIZE_BUILD_DIR) --output-on-failure -j$(JOBS)

# Only the end-to-end tests: they are the ones that run the module from several threads.
tsan: deps
	@cmake -S . -B $(TSAN_BUILD_DIR) -G Ninja -DLM_TSAN=ON -DLM_BUILD_TOOLS=OFF >/dev/null
	@cmake --build $(TSAN_BUILD_DIR) -j$(JOBS) --target e2e_tests
	@TSAN_OPTIONS="halt_on_error=1 second_deadlock_stack=1" \
		ctest --test-dir $(TSAN_BUILD_DIR) --output-on-failure -j$(JOBS) -L e2e

fuzz: deps
	@bash fuzz/run.sh $(FUZZ_SECONDS)

bench: deps
	@bash bench/run.sh

format:
	@git ls-files '*.h' '*.cpp' | xargs clang-format -i

format-check:
	@git ls-files '*.h' '*.cpp' | xargs clang-format --dry-run --Werror

clean:
	@rm -rf $(BUILD_DIR) $(SANITIZE_BUILD_DIR) $(TSAN_BUILD_DIR) build-fuzz build-bench
