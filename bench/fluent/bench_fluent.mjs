// The comparison workloads of bench/ComparisonSupport.h on Fluent (@fluent/bundle on Node.js),
// used as a program uses it: each catalog is a Fluent resource (convert_catalog.py --to ftl made
// catalog10k.ftl and catalog100k.ftl from the same texts), read from disk, parsed into a
// FluentResource and added to a FluentBundle of locale "ru" without bidi isolation marks, which
// the other libraries do not add either. Message ids are the keys as convert_catalog.py maps
// them (fluentId below): key_00042 stays key_00042.
//
//   node bench_fluent.mjs [--data=FOLDER] [--source-catalog=CATALOG] [--calls=N]
//                         [--benchmark_repetitions=N] [--benchmark_out=FILE]
//                         [--benchmark_filter=REGEX]
//
// FOLDER holds the .ftl files (default: ../comparison/fluent next to this script, where
// bench/compare.sh puts both). CATALOG is the generated catalog they were made from
// (catalog-100k.lt), against which W1's texts are checked. The report written to --benchmark_out has Google Benchmark's
// JSON form with the same run names as the C++ programs, so bench/compare_table.py reads it
// like theirs: the median, minimum and maximum of each workload over the repetitions (the
// mean and standard deviation too), times per call in ns, W3 and memory in ms. Other
// --benchmark_* flags are accepted and ignored, with a note on standard error.
//
// - W1_Lookup: bundle.getMessage(id) and bundle.formatPattern of its value; a text without
//   placeables is a JavaScript string, which is returned as it is (JavaScript strings are
//   immutable: that is the copy a C++ caller makes). Two threads are two worker_threads, each
//   with its own bundle (a bundle cannot be shared between workers), started together by a
//   barrier; their times are combined as Google Benchmark combines threads'.
// - W2_PluralParameter: getMessage("files_loaded") and formatPattern with { n }, the message a
//   select expression on NUMBER($n) over Russian's one/few/many/other, as ICU's pattern is.
// - W3_FirstString: importing the library, reading the .ftl file, parsing it, a new bundle,
//   addResource and the first formatPattern, in a new Node.js process (this script again, with
//   --child=first-string).
// - Memory_ReadEveryKey/100k: the peak resident set (VmHWM) of a new process that reads the
//   100k catalog and formats every message once, next to that of a process that only imported
//   the library. Each process reads its own VmHWM: it is the peak of that process image alone,
//   whereas getrusage's ru_maxrss also keeps the peak of the process it was forked from.
// - Machine_SpinLoop: 32-bit arithmetic alone, on the main thread and on two workers.
//
// Every text is checked: each message of W1's catalog is formatted once before the timing and,
// given CATALOG, compared with the catalog's own text, each timed loop adds up the lengths of the texts it got
// and compares the sum with the one expected, W2 checks three plural texts, and W3 and the
// memory workload fail on any message missing. A failed check ends the script with status 1.

import { execFileSync } from "node:child_process";
import fs from "node:fs";
import os from "node:os";
import path from "node:path";
import { fileURLToPath } from "node:url";
import { Worker, isMainThread, parentPort, workerData } from "node:worker_threads";

const kLookupCatalogSize = 10000;
const kLargeCatalogSize = 100000;
const kDefaultCalls = 1000000;
const kPluralCycle = 1000;
const kFirstStringIndex = 42;
const kLookupOrderSeed = 0x5745524b4c4f4144n; // the C++ programs' seed: the same order
const kDefaultRepetitions = 1;
// Each timed loop first runs untimed on each thread for this long, in rounds of
// kWarmUpRoundCalls calls, so that the times are those of the code V8 optimised and not of its
// compiling it, which on a two-core machine also takes CPU from the other thread. A warm-up of
// 100,000 lookups was not enough: one process in two then timed W1 at 1.6 times the other's.
// The C++ programs are compiled before they start.
const kWarmUpNanoseconds = 300e6;
const kWarmUpRoundCalls = 10000;

const scriptPath = fileURLToPath(import.meta.url);

function fail(message) {
  process.stderr.write(`bench_fluent: ${message}\n`);
  process.exit(1);
}

// "key_00042": the catalog's key of entry `index`.
function keyName(index) {
  return `key_${String(index).padStart(5, "0")}`;
}

// convert_catalog.py's fluent_id: letters, digits and "_" stay, any other character becomes
// "-<hex code point>-", and a key not starting with a letter is prefixed "x--".
function fluentId(key) {
  let escaped = "";
  for (const character of key) {
    escaped += /[A-Za-z0-9_]/.test(character)
      ? character
      : `-${character.codePointAt(0).toString(16)}-`;
  }
  return /^[A-Za-z]/.test(key) ? escaped : `x--${escaped}`;
}

// The W1 order of ComparisonSupport.cpp: splitmix64 with the same seed, modulo the catalog size.
function lookupOrder(count, catalogSize) {
  const order = new Uint32Array(new SharedArrayBuffer(count * 4));
  const mask = (1n << 64n) - 1n;
  const size = BigInt(catalogSize);
  let state = kLookupOrderSeed;
  for (let index = 0; index < count; ++index) {
    state = (state + 0x9e3779b97f4a7c15n) & mask;
    let z = state;
    z = ((z ^ (z >> 30n)) * 0xbf58476d1ce4e5b9n) & mask;
    z = ((z ^ (z >> 27n)) * 0x94d049bb133111ebn) & mask;
    z ^= z >> 31n;
    order[index] = Number(z % size);
  }
  return order;
}

function catalogFile(dataFolder, entries) {
  return path.join(dataFolder, entries === kLargeCatalogSize ? "catalog100k.ftl" : "catalog10k.ftl");
}

async function importFluent() {
  return import("@fluent/bundle");
}

function openBundle(fluent, dataFolder, entries) {
  const file = catalogFile(dataFolder, entries);
  const resource = new fluent.FluentResource(fs.readFileSync(file, "utf8"));
  const bundle = new fluent.FluentBundle("ru", { useIsolating: false });
  const errors = bundle.addResource(resource);
  if (errors.length !== 0) {
    fail(`${file}: ${errors[0].message}`);
  }
  return bundle;
}

// The text of message `id`, failing when the message is missing or its formatting reports an
// error.
function format(bundle, id, args = null) {
  const message = bundle.getMessage(id);
  if (message === undefined || message.value === null) {
    fail(`no message ${id}`);
  }
  const errors = [];
  const text = bundle.formatPattern(message.value, args, errors);
  if (errors.length !== 0) {
    fail(`formatting ${id}: ${errors[0].message}`);
  }
  return text;
}

// The texts of the first `count` entries of the catalog the other libraries read, for checking
// what the bundle answers: `key_00000 = 'Text.'` a line, with backslash escapes.
function expectedTexts(catalog, count) {
  const texts = new Map();
  for (const line of fs.readFileSync(catalog, "utf8").split("\n")) {
    if (texts.size === count) {
      break;
    }
    const match = /^(\S+) = '((?:[^'\\]|\\.)*)'$/.exec(line);
    if (match === null) {
      fail(`${catalog}: not a generated catalog entry: ${line}`);
    }
    texts.set(match[1], match[2].replace(/\\(.)/g, "$1"));
  }
  if (texts.size < count) {
    fail(`${catalog}: holds ${texts.size} entries, ${count} asked for`);
  }
  return texts;
}

// W1's bundle and ids, with every message formatted once and checked before the timing starts.
function lookupFixture(fluent, dataFolder, sourceCatalog) {
  const bundle = openBundle(fluent, dataFolder, kLookupCatalogSize);
  const expected = sourceCatalog ? expectedTexts(sourceCatalog, kLookupCatalogSize) : null;
  const ids = [];
  const lengths = new Uint32Array(kLookupCatalogSize);
  for (let index = 0; index < kLookupCatalogSize; ++index) {
    const key = keyName(index);
    const id = fluentId(key);
    const text = format(bundle, id);
    if (expected !== null && text !== expected.get(key)) {
      fail(`${id} is "${text}", the catalog says "${expected.get(key)}"`);
    }
    ids.push(id);
    lengths[index] = text.length;
  }
  return { bundle, ids, lengths };
}

// The sum of the lengths of the texts `calls` lookups from `start` in `order` get.
function expectedLength(fixture, order, start, calls) {
  let total = 0;
  let next = start;
  for (let call = 0; call < calls; ++call) {
    total += fixture.lengths[order[next]];
    if (++next === order.length) {
      next = 0;
    }
  }
  return total;
}

function warmUp(round) {
  const begin = process.hrtime.bigint();
  while (Number(process.hrtime.bigint() - begin) < kWarmUpNanoseconds) {
    round();
  }
}

function lookupLoop(fixture, order, start, calls) {
  const { bundle, ids } = fixture;
  let next = start;
  let total = 0;
  const begin = process.hrtime.bigint();
  for (let call = 0; call < calls; ++call) {
    total += bundle.formatPattern(bundle.getMessage(ids[order[next]]).value).length;
    if (++next === order.length) {
      next = 0;
    }
  }
  const nanoseconds = Number(process.hrtime.bigint() - begin);
  if (total !== expectedLength(fixture, order, start, calls)) {
    fail("W1_Lookup: the texts looked up are not the catalog's");
  }
  return nanoseconds;
}

// W2's loop, failing unless its texts add up to `expectedTotal` characters.
function checkedPluralLoop(bundle, calls, expectedTotal) {
  const errors = [];
  let total = 0;
  let n = 0;
  const begin = process.hrtime.bigint();
  for (let call = 0; call < calls; ++call) {
    total += bundle.formatPattern(bundle.getMessage("files_loaded").value, { n }, errors).length;
    if (++n === kPluralCycle) {
      n = 0;
    }
  }
  const nanoseconds = Number(process.hrtime.bigint() - begin);
  if (errors.length !== 0 || total !== expectedTotal) {
    fail(`W2_PluralParameter: ${errors.length} errors, ${total} characters, not ${expectedTotal}`);
  }
  return nanoseconds;
}

function spinLoop(seed, calls) {
  let value = seed | 0;
  const begin = process.hrtime.bigint();
  for (let call = 0; call < calls; ++call) {
    for (let step = 0; step < 100; ++step) {
      value = (Math.imul(value, 1664525) + 1013904223) | 0;
    }
  }
  const nanoseconds = Number(process.hrtime.bigint() - begin);
  return { nanoseconds, value };
}

// A worker: W1's second and further threads and the spin loop's. It makes its own bundle, then
// runs what it is sent once all threads have arrived at the barrier.
async function workerMain() {
  const { dataFolder, order, barrier } = workerData;
  const fluent = await importFluent();
  const fixture = lookupFixture(fluent, dataFolder, null);
  warmUp(() => lookupLoop(fixture, order, 0, kWarmUpRoundCalls));
  warmUp(() => spinLoop(0, kWarmUpRoundCalls));
  parentPort.on("message", ({ task, threads, threadIndex, calls }) => {
    if (Atomics.add(barrier, 0, 1) + 1 === threads) {
      Atomics.notify(barrier, 0);
    } else {
      while (Atomics.load(barrier, 0) < threads) {
        Atomics.wait(barrier, 0, Atomics.load(barrier, 0));
      }
    }
    if (task === "lookup") {
      const start = Math.floor(order.length / threads) * threadIndex;
      parentPort.postMessage({ nanoseconds: lookupLoop(fixture, order, start, calls) });
    } else {
      const { nanoseconds, value } = spinLoop(threadIndex, calls);
      parentPort.postMessage({ nanoseconds, value });
    }
  });
  parentPort.postMessage({ ready: true });
}

class WorkerPool {
  constructor(dataFolder, order, count) {
    this.barrier = new Int32Array(new SharedArrayBuffer(4));
    this.workers = [];
    for (let index = 0; index < count; ++index) {
      this.workers.push(
        new Worker(scriptPath, { workerData: { dataFolder, order, barrier: this.barrier } }),
      );
    }
  }

  // The worker's next message. A worker whose check failed has ended (process.exit in a worker
  // ends only its thread): that rejects, and so ends this script with status 1.
  static next(worker) {
    return new Promise((resolve, reject) => {
      const listeners = {
        message: (message) => {
          stop();
          resolve(message);
        },
        error: (error) => {
          stop();
          reject(error);
        },
        exit: (code) => {
          stop();
          reject(new Error(`a worker ended with status ${code}`));
        },
      };
      const stop = () => {
        for (const [event, listener] of Object.entries(listeners)) {
          worker.off(event, listener);
        }
      };
      for (const [event, listener] of Object.entries(listeners)) {
        worker.once(event, listener);
      }
    });
  }

  async ready() {
    await Promise.all(this.workers.map((worker) => WorkerPool.next(worker)));
  }

  // The threads' nanoseconds of one run of `task` on every worker.
  async run(task, calls) {
    Atomics.store(this.barrier, 0, 0);
    const threads = this.workers.length;
    const answers = this.workers.map((worker) => WorkerPool.next(worker));
    this.workers.forEach((worker, threadIndex) =>
      worker.postMessage({ task, threads, threadIndex, calls }),
    );
    return (await Promise.all(answers)).map((answer) => answer.nanoseconds);
  }

  async close() {
    await Promise.all(this.workers.map((worker) => worker.terminate()));
  }
}

// Runs this script again as a child and returns what it printed: its time and its peak.
function runSelf(dataFolder, args) {
  let output;
  try {
    output = execFileSync(process.execPath, [scriptPath, `--data=${dataFolder}`, ...args], {
      encoding: "utf8",
      stdio: ["ignore", "pipe", "inherit"],
    });
  } catch (error) {
    fail(`the child process ${args.join(" ")} failed: ${error.message}`);
  }
  const [nanoseconds, peakKiB] = output.trim().split(/\s+/).map(Number);
  if (!Number.isFinite(nanoseconds) || !Number.isFinite(peakKiB) || peakKiB <= 0) {
    fail(`the child process ${args.join(" ")} printed "${output.trim()}"`);
  }
  return { nanoseconds, peakKiB };
}

function peakResidentKiB() {
  const match = /^VmHWM:\s+(\d+) kB$/m.exec(fs.readFileSync("/proc/self/status", "utf8"));
  if (match === null) {
    fail("no VmHWM in /proc/self/status");
  }
  return Number(match[1]);
}

// The child's side: the library is imported before the clock starts, but for W3, which times
// the import too, as the C++ programs time loading and initialising their library. The objects
// made stay alive until the process ends.
async function childMain(mode, argument, dataFolder) {
  const importBegin = process.hrtime.bigint();
  const fluent = await importFluent();
  let nanoseconds = 0;
  const kept = [];
  if (mode === "first-string") {
    const entries = Number(argument);
    const begin = importBegin;
    const bundle = openBundle(fluent, dataFolder, entries);
    kept.push(bundle, format(bundle, fluentId(keyName(kFirstStringIndex))));
    nanoseconds = Number(process.hrtime.bigint() - begin);
  } else if (mode === "read-every-key") {
    const begin = process.hrtime.bigint();
    const bundle = openBundle(fluent, dataFolder, kLargeCatalogSize);
    let text = "";
    for (let index = 0; index < kLargeCatalogSize; ++index) {
      text = format(bundle, fluentId(keyName(index)));
    }
    kept.push(bundle, text);
    nanoseconds = Number(process.hrtime.bigint() - begin);
  } else if (mode !== "baseline") {
    fail(`unknown child mode ${mode}`);
  }
  process.stdout.write(`${nanoseconds} ${peakResidentKiB()}\n`);
}

function median(values) {
  const sorted = [...values].sort((a, b) => a - b);
  const middle = Math.floor(sorted.length / 2);
  return sorted.length % 2 === 1 ? sorted[middle] : (sorted[middle - 1] + sorted[middle]) / 2;
}

function mean(values) {
  return values.reduce((sum, value) => sum + value, 0) / values.length;
}

function standardDeviation(values) {
  if (values.length < 2) {
    return 0;
  }
  const average = mean(values);
  return Math.sqrt(
    values.reduce((sum, value) => sum + (value - average) ** 2, 0) / (values.length - 1),
  );
}

const STATISTICS = [
  ["mean", mean],
  ["median", median],
  ["stddev", standardDeviation],
  ["min", (values) => Math.min(...values)],
  ["max", (values) => Math.max(...values)],
];

// Collects the runs of each benchmark in Google Benchmark's JSON form: with one repetition the
// run itself, with more the aggregates over them. cpu_time is the whole process's CPU time
// (Node.js 20 has no thread's own), so it includes the compiler's and the collector's threads.
class Report {
  constructor() {
    this.benchmarks = [];
  }

  // `repetitionsDone` holds, for each repetition, { realTime, cpuTime, counters } in timeUnit.
  add({ runName, familyIndex, instanceIndex, threads, iterations, timeUnit, repetitionsDone }) {
    const common = {
      family_index: familyIndex,
      per_family_instance_index: instanceIndex,
      run_name: runName,
    };
    if (repetitionsDone.length === 1) {
      const [run] = repetitionsDone;
      this.benchmarks.push({
        name: runName,
        ...common,
        run_type: "iteration",
        repetitions: 1,
        repetition_index: 0,
        threads,
        iterations,
        real_time: run.realTime,
        cpu_time: run.cpuTime,
        time_unit: timeUnit,
        ...run.counters,
      });
      return;
    }
    for (const [aggregate, statistic] of STATISTICS) {
      const counters = {};
      for (const counter of Object.keys(repetitionsDone[0].counters)) {
        counters[counter] = statistic(repetitionsDone.map((run) => run.counters[counter]));
      }
      this.benchmarks.push({
        name: `${runName}_${aggregate}`,
        ...common,
        run_type: "aggregate",
        repetitions: repetitionsDone.length,
        threads,
        aggregate_name: aggregate,
        aggregate_unit: "time",
        iterations: repetitionsDone.length,
        real_time: statistic(repetitionsDone.map((run) => run.realTime)),
        cpu_time: statistic(repetitionsDone.map((run) => run.cpuTime)),
        time_unit: timeUnit,
        ...counters,
      });
    }
  }

  print() {
    for (const run of this.benchmarks) {
      if (["iteration", "median", "min", "max"].includes(run.aggregate_name ?? run.run_type)) {
        const counters = ["baseline_RSS_MiB", "peak_RSS_MiB"]
          .filter((counter) => counter in run)
          .map((counter) => ` ${counter}=${run[counter].toPrecision(6)}`)
          .join("");
        console.log(
          `${run.name.padEnd(64)} ${run.real_time.toPrecision(4).padStart(10)} ${run.time_unit}` +
            counters,
        );
      }
    }
  }

  json(fluentVersion) {
    const cpus = os.cpus();
    return {
      context: {
        date: new Date().toISOString(),
        host_name: os.hostname(),
        executable: scriptPath,
        num_cpus: cpus.length,
        mhz_per_cpu: cpus.length > 0 ? cpus[0].speed : 0,
        load_avg: os.loadavg(),
        node_version: process.version,
        fluent_bundle_version: fluentVersion,
      },
      benchmarks: this.benchmarks,
    };
  }
}

function parseArguments(argv) {
  const options = {
    calls: kDefaultCalls,
    repetitions: kDefaultRepetitions,
    out: null,
    filter: null,
    dataFolder: path.join(path.dirname(scriptPath), "..", "comparison", "fluent"),
    sourceCatalog: null,
  };
  for (const argument of argv) {
    const [flag, value] = argument.includes("=")
      ? [argument.slice(0, argument.indexOf("=")), argument.slice(argument.indexOf("=") + 1)]
      : [argument, ""];
    if (flag === "--calls") {
      options.calls = Number(value);
      if (!Number.isInteger(options.calls) || options.calls < 1) {
        fail("--calls must be at least 1");
      }
    } else if (flag === "--benchmark_repetitions") {
      options.repetitions = Number(value);
      if (!Number.isInteger(options.repetitions) || options.repetitions < 1) {
        fail("--benchmark_repetitions must be at least 1");
      }
    } else if (flag === "--benchmark_out") {
      options.out = value;
    } else if (flag === "--benchmark_filter") {
      options.filter = value;
    } else if (flag === "--benchmark_out_format") {
      if (value !== "json") {
        fail("only --benchmark_out_format=json is written");
      }
    } else if (flag === "--data") {
      options.dataFolder = value;
    } else if (flag === "--source-catalog") {
      options.sourceCatalog = value;
    } else if (flag.startsWith("--benchmark_")) {
      // The report holds the aggregates only in any case, and every workload fixes its
      // iterations, as in the C++ programs.
      if (flag !== "--benchmark_report_aggregates_only") {
        process.stderr.write(`bench_fluent: ignoring ${argument}\n`);
      }
    } else {
      fail(`unknown argument ${argument}`);
    }
  }
  return options;
}

// Google Benchmark's --benchmark_filter: a regular expression that a run's name must match, or
// with a leading "-" must not.
function selects(filter, name) {
  if (!filter) {
    return true;
  }
  return filter.startsWith("-")
    ? !new RegExp(filter.slice(1)).test(name)
    : new RegExp(filter).test(name);
}

function cpuNanoseconds() {
  const usage = process.cpuUsage();
  return (usage.user + usage.system) * 1000;
}

async function main(argv) {
  const options = parseArguments(argv);
  const fluent = await importFluent();
  const fluentVersion = JSON.parse(
    fs.readFileSync(
      path.join(path.dirname(scriptPath), "node_modules", "@fluent", "bundle", "package.json"),
      "utf8",
    ),
  ).version;
  const report = new Report();
  const { calls, repetitions, dataFolder } = options;

  const order = lookupOrder(calls, kLookupCatalogSize);
  let fixture = null;
  const pools = new Map();
  const pool = async (threads) => {
    if (!pools.has(threads)) {
      const created = new WorkerPool(dataFolder, order, threads);
      await created.ready();
      pools.set(threads, created);
    }
    return pools.get(threads);
  };

  // Machine_SpinLoop and W1_Lookup, on one thread (this one) and two (two workers): times per
  // call over all threads, as Google Benchmark reports UseRealTime with threads.
  const threaded = [
    ["Machine_SpinLoop", 0, "spin"],
    ["W1_Lookup", 1, "lookup"],
  ];
  for (const [family, familyIndex, task] of threaded) {
    for (const [instanceIndex, threads] of [1, 2].entries()) {
      const runName = `${family}/iterations:${calls}/real_time/threads:${threads}`;
      if (!selects(options.filter, runName)) {
        continue;
      }
      if (task === "lookup" && fixture === null) {
        fixture = lookupFixture(fluent, dataFolder, options.sourceCatalog);
      }
      if (threads === 1) {
        if (task === "lookup") {
          warmUp(() => lookupLoop(fixture, order, 0, kWarmUpRoundCalls));
        } else {
          warmUp(() => spinLoop(0, kWarmUpRoundCalls));
        }
      }
      const repetitionsDone = [];
      for (let repetition = 0; repetition < repetitions; ++repetition) {
        const cpuBefore = cpuNanoseconds();
        let times;
        if (threads === 1) {
          times = [
            task === "lookup"
              ? lookupLoop(fixture, order, 0, calls)
              : spinLoop(0, calls).nanoseconds,
          ];
        } else {
          times = await (await pool(threads)).run(task, calls);
        }
        const cpu = cpuNanoseconds() - cpuBefore;
        const wall = times.reduce((sum, time) => sum + time, 0) / threads;
        repetitionsDone.push({
          realTime: wall / (calls * threads),
          cpuTime: cpu / (calls * threads),
          counters: {},
        });
      }
      report.add({
        runName,
        familyIndex,
        instanceIndex,
        threads,
        iterations: calls,
        timeUnit: "ns",
        repetitionsDone,
      });
    }
  }
  for (const created of pools.values()) {
    await created.close();
  }

  const pluralName = `W2_PluralParameter/iterations:${calls}`;
  if (selects(options.filter, pluralName)) {
    fixture ??= lookupFixture(fluent, dataFolder, options.sourceCatalog);
    const { bundle } = fixture;
    for (const [n, expected] of [
      [1, "Загружено 1 файл"],
      [22, "Загружено 22 файла"],
      [111, "Загружено 111 файлов"],
    ]) {
      const text = format(bundle, "files_loaded", { n });
      if (text !== expected) {
        fail(`the plural text for ${n} is "${text}"`);
      }
    }
    // What the loops' texts add up to, from each n's text formatted once.
    const lengths = [];
    for (let n = 0; n < kPluralCycle; ++n) {
      lengths.push(format(bundle, "files_loaded", { n }).length);
    }
    const expectedTotal = (count) => {
      let total = 0;
      for (let call = 0; call < count; ++call) {
        total += lengths[call % kPluralCycle];
      }
      return total;
    };
    const roundTotal = expectedTotal(kWarmUpRoundCalls);
    warmUp(() => checkedPluralLoop(bundle, kWarmUpRoundCalls, roundTotal));
    const expected = expectedTotal(calls);
    const repetitionsDone = [];
    for (let repetition = 0; repetition < repetitions; ++repetition) {
      const cpuBefore = cpuNanoseconds();
      const nanoseconds = checkedPluralLoop(bundle, calls, expected);
      const cpu = cpuNanoseconds() - cpuBefore;
      repetitionsDone.push({ realTime: nanoseconds / calls, cpuTime: cpu / calls, counters: {} });
    }
    report.add({
      runName: pluralName,
      familyIndex: 2,
      instanceIndex: 0,
      threads: 1,
      iterations: calls,
      timeUnit: "ns",
      repetitionsDone,
    });
  }

  // W3 in a new process each time, after one untimed run per catalog so that no repetition
  // reads the file from disk.
  for (const [familyIndex, entries] of [
    [3, kLookupCatalogSize],
    [4, kLargeCatalogSize],
  ]) {
    const runName = `W3_FirstString/${entries / 1000}k/iterations:1/manual_time`;
    if (!selects(options.filter, runName)) {
      continue;
    }
    const args = ["--child=first-string", String(entries)];
    runSelf(dataFolder, args);
    const repetitionsDone = [];
    for (let repetition = 0; repetition < repetitions; ++repetition) {
      const cpuBefore = cpuNanoseconds();
      const { nanoseconds } = runSelf(dataFolder, args);
      repetitionsDone.push({
        realTime: nanoseconds / 1e6,
        cpuTime: (cpuNanoseconds() - cpuBefore) / 1e6,
        counters: {},
      });
    }
    report.add({
      runName,
      familyIndex,
      instanceIndex: 0,
      threads: 1,
      iterations: 1,
      timeUnit: "ms",
      repetitionsDone,
    });
  }

  // The peak resident set does not vary between runs the way times do: one run is enough.
  const memoryName = "Memory_ReadEveryKey/100k/iterations:1/repeats:1/manual_time";
  if (selects(options.filter, memoryName)) {
    const cpuBefore = cpuNanoseconds();
    const baseline = runSelf(dataFolder, ["--child=baseline"]);
    const peak = runSelf(dataFolder, ["--child=read-every-key"]);
    report.add({
      runName: memoryName,
      familyIndex: 5,
      instanceIndex: 0,
      threads: 1,
      iterations: 1,
      timeUnit: "ms",
      repetitionsDone: [
        {
          realTime: peak.nanoseconds / 1e6,
          cpuTime: (cpuNanoseconds() - cpuBefore) / 1e6,
          counters: {
            baseline_RSS_MiB: baseline.peakKiB / 1024,
            peak_RSS_MiB: peak.peakKiB / 1024,
          },
        },
      ],
    });
  }

  report.print();
  if (options.out) {
    fs.writeFileSync(options.out, `${JSON.stringify(report.json(fluentVersion), null, 2)}\n`);
  }
}

if (!isMainThread) {
  await workerMain();
} else {
  const child = process.argv.find((argument) => argument.startsWith("--child="));
  if (child !== undefined) {
    const rest = process.argv.slice(2);
    const dataArgument = rest.find((argument) => argument.startsWith("--data="));
    const position = rest.indexOf(child);
    await childMain(child.slice("--child=".length), rest[position + 1], dataArgument.slice(7));
  } else {
    await main(process.argv.slice(2));
  }
}
