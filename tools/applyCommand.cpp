#include "applyCommand.h"

#include "imageReader.h"
#include "imageWriter.h"
#include "outputPattern.h"
#include "pixelConversion.h"
#include "progressBar.h"
#include "quietLibraries.h"
#include "transformChain.h"

#include "morvane/morvane.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <set>

#include <unistd.h>

using namespace Morvane_2015_1_42;
namespace fs = std::filesystem;

namespace Command {

namespace {

/// The command line sorted out: leading files that the library can read as transforms are transforms too.
struct Request
{
    std::vector<std::string> transforms;
    std::vector<FilePair> pairs;
};

Request sortOut(const ApplyOptions& options)
{
    const auto isTransform = [](const std::string& file) { return isFileSupported(file.c_str()); };
    const auto firstImage = std::find_if_not(options.files.begin(), options.files.end(), isTransform);
    Request request;
    request.transforms = options.transforms;
    request.transforms.insert(request.transforms.end(), options.files.begin(), firstImage);
    if (request.transforms.empty()) throw Failure(ExitCode::USAGE, "apply needs a transform: -t FILE");
    const std::vector<std::string> images(firstImage, options.files.end());
    if (images.size() < 2) throw Failure(ExitCode::USAGE, "apply needs an input image and an output image");
    request.pairs = pairFiles({images.begin(), images.end() - 1}, images.back());
    return request;
}

FormatAbilities abilitiesOf(const ImageWriter& writer, const std::string& inputFormat)
{
    const std::string name = writer.getFormatName();
    const auto isOneOf = [&](const std::set<std::string>& names) { return names.count(name) != 0; };
    return {name == inputFormat,          writer.supports("alpha"),
            writer.supports("nchannels"), writer.supports("channelformats"),
            writer.supports("tiles"),     isOneOf({"png", "tiff", "targa", "jpeg2000"}),
            isOneOf({"dpx", "tiff"})};
}

/// An input file and what will become of it.
struct Job
{
    explicit Job(const FilePair& pair, BitDepth depth)
        : reader(pair.input), writer(pair.output), colours(findColour(reader.getSpecs()))
    {
        const FormatAbilities abilities = abilitiesOf(writer, reader.getFormatName());
        for (size_t i = 0; i < colours.size(); ++i) {
            plans.push_back(planOutput(reader.getSpecs()[i], colours[i], depth, abilities));
        }
    }

    ImageReader reader;
    ImageWriter writer;
    std::vector<ColourChannels> colours;
    std::vector<OutputImage> plans; ///< one per subimage
};

/// Fails when the file cannot hold the depth that was asked for.
void checkDepth(const FilePair& pair, const std::string& format, BitDepth asked, BitDepth stored)
{
    if (asked == BIT_DEPTH_UNKNOWN || stored == BIT_DEPTH_UNKNOWN || asked == stored) return;
    throw cannotWrite(pair.output, "the format " + format + " cannot store samples of depth " + getBitDepthName(asked));
}

/// The description as the format would store it, found by writing a tiny image into memory; as it is where the format
/// cannot do that.
OIIO::ImageSpec storedSpec(const FilePair& pair, const OIIO::ImageSpec& spec)
{
    const std::unique_ptr<OIIO::ImageOutput> output = OIIO::ImageOutput::create(pair.output);
    if (!output || !output->supports("ioproxy")) return spec;
    OIIO::ImageSpec tiny = spec;
    tiny.x = tiny.y = tiny.z = tiny.full_x = tiny.full_y = tiny.full_z = 0;
    tiny.width = tiny.height = tiny.full_width = tiny.full_height = 16;
    tiny.depth = tiny.full_depth = 1;
    tiny.tile_width = tiny.tile_height = tiny.tile_depth = 0;
    const QuietLibraries quiet;
    OIIO::Filesystem::IOVecOutput memory;
    output->set_ioproxy(&memory);
    if (!output->open(pair.output, tiny)) throw cannotWrite(pair.output, output->geterror());
    OIIO::ImageSpec stored = output->spec();
    const std::vector<unsigned char> black(stored.image_bytes(true));
    output->write_image(transferType(stored), black.data());
    output->close();
    output->geterror();
    return stored;
}

/// What happens to one subimage.
struct Step
{
    BitDepth inputDepth;
    BitDepth outputDepth;
    OIIO::ImageSpec output;
};

/// Finds out what would be converted how, before a byte is written. Fails where the conversion would, as far as that
/// can be known.
std::vector<Step> checkConversion(const FilePair& pair, const Job& job, const TransformPtr& transform, BitDepth asked)
{
    const std::string format = job.writer.getFormatName();
    if (job.plans.size() > 1 && !job.writer.supports("multiimage")) {
        throw cannotWrite(pair.output, "the format " + format + " cannot hold several images in a file");
    }
    std::vector<Step> steps;
    for (size_t i = 0; i < job.plans.size(); ++i) {
        const OIIO::ImageSpec output = storedSpec(pair, job.plans[i].spec);
        const PixelConversion conversion(transform, job.reader.getSpecs()[i], job.colours[i], output, job.plans[i]);
        checkDepth(pair, format, asked, conversion.getOutputDepth());
        steps.push_back({conversion.getInputDepth(), conversion.getOutputDepth(), output});
    }
    return steps;
}

void convertFile(const FilePair& pair, const TransformPtr& transform, const ApplyOptions& options)
{
    Job job(pair, options.outputDepth);
    checkConversion(pair, job, transform, options.outputDepth);
    std::vector<OIIO::ImageSpec> specs;
    for (const OutputImage& plan : job.plans)
        specs.push_back(plan.spec);
    for (size_t i = 0; i < specs.size(); ++i) {
        const std::vector<unsigned char> pixels = job.reader.readPixels(static_cast<int>(i));
        // The output is not touched before the input has been read.
        if (i == 0) job.writer.open(specs);
        const OIIO::ImageSpec output = job.writer.getSpec();
        const PixelConversion conversion(transform, job.reader.getSpecs()[i], job.colours[i], output, job.plans[i]);
        checkDepth(pair, job.writer.getFormatName(), options.outputDepth, conversion.getOutputDepth());
        job.writer.writePixels(conversion.convert(pixels, options.threads));
    }
    job.writer.commit();
}

void checkPlace(const std::string& path)
{
    const fs::path directory = fs::path(path).has_parent_path() ? fs::path(path).parent_path() : fs::path(".");
    if (!fs::is_directory(directory)) {
        throw cannotWrite(path, "the directory '" + directory.string() + "' does not exist");
    }
    if (access(directory.c_str(), W_OK) != 0) {
        throw cannotWrite(path, "the directory '" + directory.string() + "' cannot be written to");
    }
}

/// Does everything that convertFile() does up to the first byte written, and says what would follow.
void describeConversion(const FilePair& pair, const TransformPtr& transform, const ApplyOptions& options)
{
    const Job job(pair, options.outputDepth);
    checkPlace(pair.output);
    const std::vector<Step> steps = checkConversion(pair, job, transform, options.outputDepth);
    for (size_t i = 0; i < steps.size(); ++i) {
        const OIIO::ImageSpec& input = job.reader.getSpecs()[i];
        std::printf("would convert '%s' to '%s' (%s): %d x %d, ", pair.input.c_str(), pair.output.c_str(),
                    job.writer.getFormatName().c_str(), input.width, input.height);
        if (job.colours[i].indices.empty()) {
            std::printf("%d channels copied\n", steps[i].output.nchannels);
        } else {
            std::printf("%d to %d channels, %s to %s\n", input.nchannels, steps[i].output.nchannels,
                        getBitDepthName(steps[i].inputDepth), getBitDepthName(steps[i].outputDepth));
        }
    }
}

/// Runs the step for one pair; a failure of any kind becomes a Failure.
template <class Step>
ExitCode attempt(const FilePair& pair, ProgressBar& bar, Step step)
{
    try {
        step();
        return ExitCode::OK;
    } catch (const Failure& failure) {
        bar.clear();
        report(failure);
        return failure.getCode();
    } catch (const std::exception& error) {
        bar.clear();
        report({ExitCode::CONVERSION, "cannot convert image '" + pair.input + "': " + error.what()});
        return ExitCode::CONVERSION;
    }
}

} // namespace

ExitCode runApply(const ApplyOptions& options)
{
    const Request request = sortOut(options);
    const TransformPtr transform = loadTransformChain(request.transforms, options.inverse);
    OIIO::attribute("threads", static_cast<int>(options.threads));

    ProgressBar bar(options.dryRun ? 0 : request.pairs.size());
    ExitCode first = ExitCode::OK;
    size_t done = 0;
    for (const FilePair& pair : request.pairs) {
        bar.draw(done++);
        const ExitCode code = attempt(pair, bar, [&] {
            if (options.dryRun) {
                describeConversion(pair, transform, options);
            } else {
                convertFile(pair, transform, options);
            }
        });
        if (first == ExitCode::OK) first = code;
    }
    return first;
}

} // namespace Command
