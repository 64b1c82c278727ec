// Reading and writing of typical metadata blocks, beside exiv2's library where it is installed.

#include "metadata/AdobeResources/AdobeResources.h"
#include "metadata/Iptc/IptcDataStorage.h"
#include "metadata/Streams/MemoryReader.h"
#include "metadata/Xmp/XMPData.h"
#include "metadata/Xmp/XMPNamespace.h"

#include <benchmark/benchmark.h>
#ifdef RASTERLOOM_BENCH_EXIV2
#include <exiv2/exiv2.hpp>
#endif

#include <string>
#include <vector>

using namespace ImagingFramework;

namespace {

using Bytes = std::vector<std::uint8_t>;

/// What a picture desk fills in: 25 data sets in 700 bytes.
const Bytes& IptcBlock() {
    static const Bytes block = [] {
        IptcDataStorage storage;
        std::string text = "Some text of a usual length";
        for (const std::uint32_t key : {0x205U, 0x20FU, 0x228U, 0x26EU, 0x250U, 0x255U, 0x25AU, 0x25FU, 0x265U, 0x267U,
                                        0x269U, 0x27AU, 0x273U, 0x274U, 0x278U}) {
            storage.AddDataset(key, DataItem(&text));
        }
        text = "keyword";
        for (int i = 0; i < 10; ++i) {
            storage.AddDataset(0x219, DataItem(&text));
        }
        Bytes bytes;
        storage.GetIptcAsBinary(bytes);
        return bytes;
    }();
    return block;
}

/// What an editor writes: 20 blocks, one of them the IPTC block, one a thumbnail of 8 KB.
const Bytes& ResourceBlock() {
    static const Bytes block = [] {
        AdobeResources resources;
        for (std::uint32_t id = 0x3ED; id < 0x3ED + 18; ++id) {
            resources.SetItem(id, DataItem(new AdobeResourceBlock(0, "", Bytes(id % 40))));
        }
        resources.SetItem(0x404, DataItem(new AdobeResourceBlock(0, "", IptcBlock())));
        resources.SetItem(0x40C, DataItem(new AdobeResourceBlock(0, "", Bytes(8192, 0x5A))));
        Bytes bytes;
        resources.Save(bytes);
        return bytes;
    }();
    return block;
}

/// Camera settings of a raw converter, a history of ten steps, keywords and texts: 110 properties in 13 KB.
const std::string& Packet() {
    static const std::string packet = [] {
        XMPData data;
        const auto ns = [](const char* prefix) -> const XMPNamespace& { return *XMPNamespace::FindByPrefix(prefix); };
        for (int i = 0; i < 80; ++i) {
            data.AddNode(XMPNodeType::SimpleProperty, ns("crs"), "Setting" + std::to_string(i), "+0.25");
        }
        for (int i = 0; i < 25; ++i) {
            data.AddNode(XMPNodeType::SimpleProperty, ns("exif"), "Property" + std::to_string(i), "1/250");
        }
        data.AddNode(XMPNodeType::LocalizedText, ns("dc"), "title", "").CreateLocalizedText("x-default", "The lake");
        XMPNode& subject = data.AddNode(XMPNodeType::UnorderedArray, ns("dc"), "subject", "");
        XMPNode& history = data.AddNode(XMPNodeType::OrderedArray, ns("xmpMM"), "History", "");
        for (int i = 0; i < 10; ++i) {
            subject.CreateArrayItem(XMPNodeType::SimpleProperty, "keyword");
            XMPNode& step = history.CreateArrayItem(XMPNodeType::Structure, "");
            for (const char* const field : {"action", "instanceID", "when", "softwareAgent"}) {
                step.CreateStructField(ns("stEvt"), field, XMPNodeType::SimpleProperty, "2024-02-29T12:00:00+01:00");
            }
        }
        return data.SaveToBuffer();
    }();
    return packet;
}

void BM_IptcRead(benchmark::State& state) {
    for (auto _ : state) {
        MemoryReader reader(IptcBlock().data(), IptcBlock().size());
        IptcDataStorage storage;
        storage.Initialize(&reader);
        benchmark::DoNotOptimize(storage);
    }
}

void BM_IptcWrite(benchmark::State& state) {
    MemoryReader reader(IptcBlock().data(), IptcBlock().size());
    IptcDataStorage storage;
    storage.Initialize(&reader);
    for (auto _ : state) {
        Bytes bytes;
        benchmark::DoNotOptimize(storage.GetIptcAsBinary(bytes));
    }
}

void BM_ResourcesReadAndWrite(benchmark::State& state) {
    for (auto _ : state) {
        AdobeResources resources;
        resources.Initialize(ResourceBlock().data(), ResourceBlock().size());
        resources.SetItem(0x404, DataItem(new AdobeResourceBlock(0, "", IptcBlock())));
        Bytes bytes;
        resources.Save(bytes);
        benchmark::DoNotOptimize(bytes);
    }
}

void BM_XmpRead(benchmark::State& state) {
    for (auto _ : state) {
        const XMPData data(Packet());
        benchmark::DoNotOptimize(data.GetNodeCount());
    }
}

void BM_XmpWrite(benchmark::State& state) {
    const XMPData data(Packet());
    for (auto _ : state) {
        benchmark::DoNotOptimize(data.SaveToBuffer());
    }
}

BENCHMARK(BM_IptcRead)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_IptcWrite)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_ResourcesReadAndWrite)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_XmpRead)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_XmpWrite)->Unit(benchmark::kMicrosecond);

#ifdef RASTERLOOM_BENCH_EXIV2

void BM_Exiv2IptcRead(benchmark::State& state) {
    for (auto _ : state) {
        Exiv2::IptcData data;
        Exiv2::IptcParser::decode(data, IptcBlock().data(), static_cast<std::uint32_t>(IptcBlock().size()));
        benchmark::DoNotOptimize(data);
    }
}

void BM_Exiv2IptcWrite(benchmark::State& state) {
    Exiv2::IptcData data;
    Exiv2::IptcParser::decode(data, IptcBlock().data(), static_cast<std::uint32_t>(IptcBlock().size()));
    for (auto _ : state) {
        benchmark::DoNotOptimize(Exiv2::IptcParser::encode(data));
    }
}

void BM_Exiv2ResourcesSetIptc(benchmark::State& state) {
    Exiv2::IptcData data;
    Exiv2::IptcParser::decode(data, IptcBlock().data(), static_cast<std::uint32_t>(IptcBlock().size()));
    for (auto _ : state) {
        benchmark::DoNotOptimize(
            Exiv2::Photoshop::setIptcIrb(ResourceBlock().data(), static_cast<long>(ResourceBlock().size()), data));
    }
}

void BM_Exiv2XmpRead(benchmark::State& state) {
    Exiv2::XmpParser::initialize();
    for (auto _ : state) {
        Exiv2::XmpData data;
        Exiv2::XmpParser::decode(data, Packet());
        benchmark::DoNotOptimize(data);
    }
}

void BM_Exiv2XmpWrite(benchmark::State& state) {
    Exiv2::XmpParser::initialize();
    Exiv2::XmpData data;
    Exiv2::XmpParser::decode(data, Packet());
    for (auto _ : state) {
        std::string packet;
        Exiv2::XmpParser::encode(packet, data);
        benchmark::DoNotOptimize(packet);
    }
}

BENCHMARK(BM_Exiv2IptcRead)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Exiv2IptcWrite)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Exiv2ResourcesSetIptc)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Exiv2XmpRead)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Exiv2XmpWrite)->Unit(benchmark::kMicrosecond);

#endif

} // namespace

BENCHMARK_MAIN();
