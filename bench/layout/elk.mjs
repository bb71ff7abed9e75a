// Lays out the graph of the standard input with ELK's layered algorithm: node elk.mjs <graph >placed-graph
import { readFileSync } from 'node:fs'
import { createRequire } from 'node:module'

const ELK = createRequire(process.cwd() + '/')('elkjs')
const placed = await new ELK().layout(JSON.parse(readFileSync(0)))
process.stdout.write(JSON.stringify(placed))
