# What people type. Each line is one step over CMake; CMakePresets.json has the settings.

RELEASE := build/release
HOST := $(RELEASE)/bin/vesk-host

.PHONY: help run test bench gallery soak build-run build-release packages-run packages-test clean

help:
	@echo "make run      show the device list (ARGS=\"--help\" for the host's options)"
	@echo "make test     build and run all tests"
	@echo "make bench    speed and memory beside a bare toolkit program"
	@echo "make gallery  a picture of every state of the screen, with a page to look at them"
	@echo "make soak     the random walk of keys, touches and service events (STEPS=200000 SEED=1)"

run: packages-run build-run
	@$(HOST) $(ARGS)

test: packages-test build-release
	@tools/run-tests.sh --preset release $(ARGS)

bench: packages-test build-release
	@$(RELEASE)/bin/vesk-bench $(ARGS)

gallery: packages-test build-release
	@$(RELEASE)/bin/vesk-gallery $(ARGS)
	@$(RELEASE)/bin/vesk-gallery --faults

soak: packages-test build-release
	@$(RELEASE)/bin/screen_walk_test --steps $(or $(STEPS),200000) --seed $(or $(SEED),random)

build-run build-release: build-%:
	@cmake --preset release > $(RELEASE)-configure.log 2>&1 || { cat $(RELEASE)-configure.log; exit 1; }
	@cmake --build --preset $*

packages-run packages-test: packages-%:
	@tools/install-packages.sh $*
	@mkdir -p build

clean:
	rm -rf build
